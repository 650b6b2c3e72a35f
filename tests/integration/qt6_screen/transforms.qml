// Things that are scaled, turned, moved and stacked.
import QtQuick
import QtQuick.Controls

Window {
    visible: true
    width: 600
    height: 500
    title: "Transforms"

    Rectangle {
        x: 50
        y: 50
        width: 200
        height: 100
        scale: 0.5
        transformOrigin: Item.TopLeft
        color: "lightblue"
        Button {
            x: 20
            y: 20
            width: 100
            height: 40
            text: "Halved"
        }
    }
    Button {
        x: 300
        y: 100
        width: 100
        height: 40
        rotation: 90
        text: "Upright"
    }
    Button {
        x: 300
        y: 250
        width: 100
        height: 40
        text: "Stretched"
        transform: [
            Scale { xScale: 2 },
            Translate { x: 30 }
        ]
    }
    Button {
        x: 50
        y: 250
        width: 100
        height: 40
        text: "Behind"
    }
    Rectangle {
        x: 40
        y: 240
        width: 160
        height: 60
        color: "khaki"
    }
    Text {
        x: 50
        y: 350
        text: "Raised"
        z: 2
    }
    Text {
        x: 590
        y: 350
        width: 100
        text: "Half outside"
    }
    Text {
        x: 700
        y: 10
        text: "Outside"
    }
    Text {
        x: 60
        y: 400
        text: "Moved"
    }
    Text {
        x: 50
        y: 400
        scale: 0
        text: "Shrunk away"
    }
    component FancyView: Item {
        property string caption: "Fancy"
    }
    FancyView {
        x: 50
        y: 450
        width: 60
        height: 20
        Accessible.name: caption
    }
}
