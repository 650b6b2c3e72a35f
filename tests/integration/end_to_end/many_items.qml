import QtQuick

// As many accessible items as the test asks for, each with its number, all inside the window.
Window {
    id: window
    readonly property int count: Number(Qt.application.arguments[Qt.application.arguments.length - 1])
    readonly property int columns: 100
    width: 1000
    height: 1000
    visible: true
    title: "Many items"

    Repeater {
        model: window.count
        Text {
            required property int index
            x: (index % window.columns) * 10
            y: Math.floor(index / window.columns) * 10
            width: 10
            height: 10
            clip: true
            text: "Item " + index
        }
    }
}
