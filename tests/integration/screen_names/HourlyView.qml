import QtQuick

Rectangle {
    color: "#dde"
    Text { anchors.centerIn: parent; text: "Hourly" }
}
