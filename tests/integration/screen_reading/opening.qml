// Windows that come and go all the time.
import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: root
    visible: true
    width: 300
    height: 200
    property int turn: 0
    Component {
        id: page
        Window {
            visible: true
            width: 250
            height: 150
            Repeater {
                model: 200
                Text { text: "Line " + index; y: index }
            }
        }
    }
    property var child: null
    Timer {
        interval: 7
        running: true
        repeat: true
        onTriggered: {
            ++root.turn
            if (root.child) {
                root.child.destroy()
                root.child = null
            } else {
                root.child = page.createObject(null)
            }
        }
    }
}
