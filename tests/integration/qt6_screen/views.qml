// Views that make their rows as needed, pages of which one is shown, and content that scrolls whole.
import QtQuick
import QtQuick.Controls

ApplicationWindow {
    visible: true
    width: 900
    height: 600
    title: "Views"

    ListModel {
        id: rows
        Component.onCompleted: {
            for (let row = 0; row < 300; ++row)
                append({ "label": "Cell " + row });
        }
    }

    Grid {
        columns: 3
        spacing: 10
        padding: 10

        ListView {
            id: list
            width: 200
            height: 150
            cacheBuffer: 1000
            clip: true
            model: 100
            section.property: "index"
            header: Label { text: "List header" }
            delegate: ItemDelegate {
                required property int index
                width: ListView.view.width
                height: 40
                text: "Row " + index
            }
        }
        ListView {
            id: reusing
            width: 200
            height: 150
            reuseItems: true
            clip: true
            model: 1000
            delegate: Label {
                required property int index
                height: 40
                text: "Reused " + index
            }
            Timer {
                property int step: 0
                interval: 30
                repeat: true
                running: step < 10
                onTriggered: {
                    step += 1;
                    reusing.contentY = step % 2 ? 4000 * step : 0;
                    cells.contentY = step % 2 ? 900 * step : 0;
                }
            }
        }
        GridView {
            width: 200
            height: 150
            cellWidth: 60
            cellHeight: 60
            clip: true
            model: 50
            delegate: Text {
                required property int index
                text: "G" + index
            }
        }
        TableView {
            id: cells
            width: 200
            height: 150
            clip: true
            model: rows
            delegate: Item {
                required property string label
                implicitWidth: 100
                implicitHeight: 30
                Text { text: parent.label }
            }
        }
        PathView {
            width: 200
            height: 150
            pathItemCount: 3
            clip: true
            model: 20
            cacheItemCount: 10
            path: Path {
                startX: 0
                startY: 75
                PathLine { x: 200; y: 75 }
            }
            delegate: Text {
                required property int index
                text: "P" + index
            }
        }
        SwipeView {
            width: 200
            height: 150
            clip: true
            currentIndex: 1
            Page { Label { text: "Swipe page 1" } }
            Page { Label { text: "Swipe page 2" } }
            Page { Label { text: "Swipe page 3" } }
        }
        StackView {
            id: stack
            width: 200
            height: 150
            initialItem: Page { Label { text: "Bottom of the stack" } }
            Component.onCompleted: push(top, StackView.Immediate)
            Component {
                id: top
                Page { Label { text: "Top of the stack" } }
            }
        }
        ScrollView {
            width: 200
            height: 150
            Column {
                Repeater {
                    model: 20
                    Label {
                        required property int index
                        height: 20
                        text: "Scrolled " + index
                    }
                }
            }
        }
        Flickable {
            width: 200
            height: 150
            contentHeight: 400
            clip: true
            Text {
                y: 350
                text: "Far down"
            }
            ListView {
                y: 200
                width: 200
                height: 60
                model: 20
                delegate: Text {
                    required property int index
                    height: 20
                    text: "Inner " + index
                }
            }
        }
    }
}
