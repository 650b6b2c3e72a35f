// A screen of as many buttons as the number that stands last on the command line.
import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: window

    readonly property int count: Number(Qt.application.arguments[Qt.application.arguments.length - 1])
    readonly property int columns: Math.ceil(Math.sqrt(count))

    width: 1000
    height: 1000
    visible: true
    title: "Many items"

    Grid {
        columns: window.columns

        Repeater {
            model: window.count

            Button {
                required property int index

                width: window.width / window.columns
                height: width
                text: "Item " + index
                onClicked: console.info("clicked")
            }
        }
    }
}
