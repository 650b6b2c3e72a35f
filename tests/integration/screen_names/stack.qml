import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: window

    component Basket: Page {
        id: page
        property int count: 2
        title: "Basket"
        Label { anchors.centerIn: parent; text: "Basket of " + page.count }
    }

    visible: true
    width: 500
    height: 400
    title: "Shop"

    function act(word, number) {
        switch (word) {
        case "file": stack.push("ContentView.qml"); break
        case "basket": stack.push(basket); break
        case "pop": stack.pop(); break
        case "ask": question.open(); break
        case "answer": question.close(); break
        case "menu": menu.open(); break
        case "choose": menu.close(); break
        }
    }

    StackView {
        id: stack
        anchors.fill: parent
        initialItem: Page {
            title: "Catalogue"
            Label { anchors.centerIn: parent; text: "Catalogue" }
        }
    }
    Component { id: basket; Basket {} }
    Dialog {
        id: question
        title: "Really pay?"
        modal: true
        anchors.centerIn: parent
        standardButtons: Dialog.Ok
    }
    Menu {
        id: menu
        MenuItem { text: "One" }
        MenuItem { text: "Two" }
    }
}
