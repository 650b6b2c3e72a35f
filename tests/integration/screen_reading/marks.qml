// Rectangles of a colour of their own each, named after it, in every way that an item can be placed.
import QtQuick
import QtQuick.Controls

Window {
    visible: true
    width: 400
    height: 500
    title: "Marks"
    color: "white"

    component Mark: Rectangle {
        objectName: "mark " + color
        width: 40
        height: 30
    }
    component PriceTag: Rectangle {
        width: 60
        height: 20
        objectName: "price"
        MouseArea { anchors.fill: parent }
    }

    Mark { x: 10; y: 10; color: "#ff0000" }
    Mark { x: 100; y: 10; color: "#00ff00"; scale: 1.5; transformOrigin: Item.TopLeft }
    Mark { x: 200; y: 10; color: "#0000ff"; rotation: 90; transformOrigin: Item.Center }
    Item {
        x: 300
        y: 10
        width: 80
        height: 80
        scale: 0.5
        Mark { x: 10; y: 20; color: "#ff00ff" }
        Mark { x: 60; y: 20; color: "#808000"; transform: Scale { xScale: -1; origin.x: 20 } }
    }
    Item {
        x: 20
        y: 120
        rotation: 180
        width: 100
        height: 60
        Mark { x: 5; y: 5; color: "#00ffff" }
    }
    Flickable {
        x: 150
        y: 120
        width: 100
        height: 100
        contentWidth: 100
        contentHeight: 400
        contentY: 55
        clip: true
        Mark { x: 10; y: 80; color: "#008080" }
    }
    PriceTag { x: 280; y: 120; color: "#123456" }
    Row {
        x: 10
        y: 240
        spacing: 10
        Button { text: "Save"; objectName: "save" }
        Switch { text: "Sound" }
        CheckBox { text: "Wrap" }
    }
    Slider { x: 10; y: 300; width: 100; objectName: "volume" }
    TextField { x: 150; y: 300; placeholderText: "Name" }
    ListView {
        x: 10
        y: 360
        width: 200
        height: 100
        clip: true
        model: 10000
        delegate: ItemDelegate { text: "Row " + index; width: 200; height: 25 }
    }
}
