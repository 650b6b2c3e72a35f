import QtQuick

// Ends by itself with the exit code of its last argument, after the milliseconds of the last but
// one.
Window {
    readonly property var words: Qt.application.arguments
    width: 100
    height: 100
    visible: true

    Timer {
        interval: Number(words[words.length - 2])
        running: true
        onTriggered: Qt.exit(Number(words[words.length - 1]))
    }
}
