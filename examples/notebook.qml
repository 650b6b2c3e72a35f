// A small application to try the probe on, with a bit of everything that it reads and drives:
//
//     tarnix run -- /usr/lib/qt6/bin/qml examples/notebook.qml
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

ApplicationWindow {
    id: window
    visible: true
    width: 420
    height: 560
    title: "Notebook"

    ListModel {
        id: notes
        ListElement { title: "Milk"; done: false }
        ListElement { title: "Bread"; done: true }
    }

    header: ToolBar {
        RowLayout {
            anchors.fill: parent
            ToolButton {
                text: "Back"
                visible: pages.depth > 1
                onClicked: pages.pop()
            }
            Label {
                Layout.fillWidth: true
                text: pages.currentItem.title
                horizontalAlignment: Text.AlignHCenter
                Accessible.role: Accessible.Heading
            }
            ToolButton {
                text: "Menu"
                onClicked: menu.open()
                Menu {
                    id: menu
                    y: parent.height
                    MenuItem {
                        text: "Clear all"
                        onClicked: clearing.open()
                    }
                }
            }
        }
    }

    Dialog {
        id: clearing
        anchors.centerIn: parent
        modal: true
        title: "Clear all notes?"
        standardButtons: Dialog.Yes | Dialog.No
        onAccepted: notes.clear()
    }

    StackView {
        id: pages
        anchors.fill: parent
        initialItem: listPage
    }

    Component {
        id: listPage
        Page {
            title: "Notes"
            ColumnLayout {
                anchors.fill: parent
                anchors.margins: 12
                RowLayout {
                    TextField {
                        id: field
                        Layout.fillWidth: true
                        placeholderText: "New note"
                        onAccepted: add.clicked()
                    }
                    Button {
                        id: add
                        text: "Add"
                        enabled: field.text.length > 0
                        onClicked: {
                            notes.append({ title: field.text, done: false });
                            field.clear();
                        }
                    }
                }
                ListView {
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    clip: true
                    model: notes
                    delegate: ItemDelegate {
                        id: row
                        required property int index
                        required property string title
                        required property bool done
                        width: ListView.view.width
                        contentItem: RowLayout {
                            CheckBox {
                                text: row.title
                                checked: row.done
                                onToggled: notes.setProperty(row.index, "done", checked)
                            }
                            Item { Layout.fillWidth: true }
                            Button {
                                text: "Open"
                                onClicked: pages.push(notePage, { title: row.title })
                            }
                        }
                    }
                }
            }
        }
    }

    Component {
        id: notePage
        Page {
            TextArea {
                anchors.fill: parent
                anchors.margins: 12
                placeholderText: "What is there to say?"
            }
        }
    }
}
