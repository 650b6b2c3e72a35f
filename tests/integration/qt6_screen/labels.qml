// Controls whose names are only what stands beside them, or the picture on them.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

ApplicationWindow {
    visible: true
    width: 500
    height: 400

    ColumnLayout {
        anchors.left: parent.left
        anchors.right: parent.right
        RowLayout {
            Label { text: "Width:" }
            SpinBox { value: 3 }
        }
        Label { text: "Address" }
        TextArea { text: "First line\nsecond line" }
        RowLayout {
            Button { icon.source: "pictures/go-previous_24.svg" }
            Button { icon.name: "document-open" }
            Button {
                icon.name: "edit-copy"
                ToolTip.text: "Take a copy"
            }
            Slider { value: 0.5 }
        }
        RowLayout {
            CheckBox { text: "Rich <b>check</b>" }
            Button { text: "<i>Rich</i> button" }
            Button { text: "1 < 2" }
        }
    }
}
