import QtQuick
import QtQuick.Controls

Page {
    Label { anchors.centerIn: parent; text: "A page of a file, without a title" }
}
