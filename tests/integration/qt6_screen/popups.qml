// What opens over a window: `show` opens the one of that name, and so does the last word on the
// command line.
import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: window
    visible: true
    width: 500
    height: 400
    title: "Popups"

    function show(name) {
        ({ "menu": menu, "dialog": dialog, "drawer": drawer, "popup": popup, "combo": combo.popup })[name]?.open();
    }

    Column {
        padding: 20
        spacing: 10
        Button { text: "In the page" }
        ComboBox {
            id: combo
            model: ["Apple", "Banana", "Cherry"]
        }
        Label { text: "Below" }
    }
    Label {
        x: 220
        y: 180
        text: "Behind the dialog"
    }
    Menu {
        id: menu
        x: 250
        y: 20
        MenuItem { text: "&Copy" }
        MenuItem {
            text: "Paste"
            enabled: false
        }
        MenuSeparator {}
        MenuItem {
            text: "Wrapped"
            checkable: true
            checked: true
        }
        Menu {
            title: "More"
            MenuItem { text: "Inside" }
        }
    }
    Dialog {
        id: dialog
        anchors.centerIn: parent
        title: "Delete?"
        standardButtons: Dialog.Ok | Dialog.Cancel
        modal: true
        Label { text: "This cannot be undone." }
    }
    Drawer {
        id: drawer
        width: 150
        height: window.height
        Label { text: "In the drawer" }
    }
    Popup {
        id: popup
        x: 100
        y: 250
        Label { text: "In the popup" }
    }
    Component.onCompleted: show(Qt.application.arguments[Qt.application.arguments.length - 1])
}
