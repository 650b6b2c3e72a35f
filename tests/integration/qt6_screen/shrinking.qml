// Views that lose most of their rows, and keep the items for new ones.
import QtQuick
import QtQuick.Controls

Window {
    visible: true
    width: 500
    height: 300
    title: "Shrinking"

    component Row: Item {
        property alias text: label.text
        implicitWidth: 100
        implicitHeight: 30
        Text { id: label }
    }

    TableView {
        width: 200
        height: 300
        model: ListModel { id: cells }
        delegate: Row {
            required property int number
            text: "Cell " + number
        }
    }
    ListView {
        x: 220
        width: 200
        height: 300
        reuseItems: true
        model: ListModel { id: rows }
        delegate: Row {
            required property int number
            text: "Row " + number
        }
    }
    Component.onCompleted: {
        for (let number = 0; number < 6; ++number) {
            cells.append({ number });
            rows.append({ number });
        }
    }
    Timer {
        interval: 100
        running: true
        onTriggered: {
            cells.remove(2, 4);
            rows.remove(2, 4);
        }
    }
}
