import QtQuick
import QtQuick.Controls

// Items whose places are known to the test that reads them.
ApplicationWindow {
    width: 400
    height: 300
    visible: true
    title: "Geometry"

    Button {
        x: 20; y: 30; width: 100; height: 40
        text: "&Press <me> && \"go\""
    }
    TextField {
        x: 20; y: 100; width: 200; height: 41
        placeholderText: "Your name"
        text: "Ada"
    }
    Text {
        x: 250; y: 30; width: 101; height: 21
        text: "Plain text"
    }
    Item {
        x: 200; y: 150; width: 200; height: 100
        Item {
            x: 10; y: 10; width: 100; height: 60
            CheckBox {
                x: 5; y: 6; width: 80; height: 30
                text: "Nested"
            }
        }
    }
    Button {
        x: 20; y: 200; width: 100; height: 40
        visible: false
        text: "Hidden"
    }
}
