import QtQuick

// Is busy for the milliseconds of its last argument before its main loop runs, then ends.
Window {
    readonly property var words: Qt.application.arguments
    width: 100
    height: 100
    visible: true

    Component.onCompleted: {
        const begin = Date.now();
        while (Date.now() - begin < Number(words[words.length - 1])) {
        }
        Qt.callLater(Qt.quit);
    }
}
