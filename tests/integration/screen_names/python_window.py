"""A program of Python with pages and dialogs, which does what its standard input says."""

import sys

from PyQt6.QtCore import QSocketNotifier
from PyQt6.QtWidgets import (
    QApplication,
    QDialog,
    QLabel,
    QMainWindow,
    QMessageBox,
    QStackedWidget,
    QWidget,
)


class NotePage(QWidget):
    pass


class SearchDialog(QDialog):
    pass


class NotesWindow(QMainWindow):
    def __init__(self):
        super().__init__()
        self.pages = QStackedWidget()
        self.pages.addWidget(NotePage())
        self.pages.addWidget(QWidget())
        self.setCentralWidget(self.pages)
        self.resize(500, 400)
        self.dialog = None

    def act(self, line):
        word, *rest = line.split()
        if word == "page":
            self.pages.setCurrentIndex(int(rest[0]))
        elif word == "close":
            self.dialog.close()
        else:
            self.dialog = {"search": SearchDialog, "box": QMessageBox, "plain": QDialog}[word](self)
            QLabel(f"This is a {word}", self.dialog)
            self.dialog.resize(300, 200)
            self.dialog.open()
        print("done", flush=True)


application = QApplication(sys.argv)
window = NotesWindow()
window.show()
notifier = QSocketNotifier(sys.stdin.fileno(), QSocketNotifier.Type.Read)
notifier.activated.connect(lambda: window.act(sys.stdin.readline()))
sys.exit(application.exec())
