// Every control of the Controls library that says something to a person.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

ApplicationWindow {
    id: window
    visible: true
    width: 900
    height: 1000
    title: "Controls"

    menuBar: MenuBar {
        Menu {
            title: "&File"
            Action { text: "&Open" }
        }
        Menu { title: "&View" }
    }
    header: ToolBar {
        RowLayout {
            ToolButton { text: "Back" }
            ToolButton {
                icon.name: "edit-find"
                ToolTip.text: "Search the list"
            }
            Label {
                text: "Heading"
                Accessible.role: Accessible.Heading
            }
        }
    }
    footer: TabBar {
        TabButton { text: "First tab" }
        TabButton { text: "Second tab" }
    }

    RowLayout {
        anchors.fill: parent
        anchors.margins: 10
        ColumnLayout {
            Layout.alignment: Qt.AlignTop
            Button { text: "&Save" }
            Button { text: "Salt && pepper" }
            Button {
                text: "Disabled"
                enabled: false
            }
            Button {
                text: "Pressed in"
                checkable: true
                checked: true
            }
            Button {
                objectName: "ownContent"
                contentItem: Text { text: "Own content" }
            }
            RoundButton { text: "+" }
            DelayButton { text: "Hold me" }
            CheckBox {
                text: "Check box"
                checked: true
            }
            CheckBox {
                text: "Tristate"
                tristate: true
                checkState: Qt.PartiallyChecked
            }
            RadioButton { text: "Radio button" }
            Switch {
                text: "Switch"
                checked: true
            }
            ItemDelegate { text: "Item delegate" }
            CheckDelegate { text: "Check delegate" }
            SwitchDelegate { text: "Switch delegate" }
            ItemDelegate {
                objectName: "compound"
                Layout.preferredWidth: 240
                contentItem: RowLayout {
                    Label { text: "Compound" }
                    Button { text: "Inner" }
                }
            }
        }
        ColumnLayout {
            Layout.alignment: Qt.AlignTop
            TextField { placeholderText: "Your name" }
            TextField {
                placeholderText: "Filled"
                text: "some text"
            }
            TextField {
                placeholderText: "Password"
                text: "secret"
                echoMode: TextInput.Password
            }
            TextField {
                Accessible.name: "Search field"
                Accessible.searchEdit: true
            }
            TextInput { text: "bare input" }
            TextArea {
                placeholderText: "Notes"
                text: "<b>bold</b> note"
                textFormat: TextEdit.RichText
            }
            ComboBox { model: ["Red", "Green"] }
            ComboBox {
                editable: true
                Accessible.name: "Colour"
                model: ["Blue", "White"]
            }
            SpinBox { value: 42 }
            SpinBox {
                value: 7
                Accessible.name: "Amount"
                editable: true
            }
            Slider {
                value: 0.25
                Accessible.name: "Volume"
            }
            Dial {
                value: 0.5
                Accessible.name: "Balance"
            }
            RangeSlider {
                Accessible.name: "Price"
                first.value: 0.25
                second.value: 0.75
            }
            ProgressBar {
                value: 0.3
                Accessible.name: "Loading"
            }
        }
        ColumnLayout {
            Layout.alignment: Qt.AlignTop
            GroupBox {
                title: "Group"
                Label { text: "In the group" }
            }
            Text { text: "Plain <b>rich</b> text" }
            Text {
                text: "1 < 2 & 3"
                textFormat: Text.PlainText
            }
            Text { text: "<a href='https://example.org'>A link</a>" }
            Text {
                text: "*Marked* down"
                textFormat: Text.MarkdownText
            }
            Text { text: "Multi\nline" }
            Image {
                width: 20
                height: 20
                source: "data:image/svg+xml,<svg xmlns='http://www.w3.org/2000/svg'/>"
                Accessible.role: Accessible.Graphic
                Accessible.name: "Picture"
            }
            Rectangle {
                objectName: "ownButton"
                width: 120
                height: 30
                color: "steelblue"
                Accessible.role: Accessible.Button
                Accessible.name: "Own button"
                Text {
                    anchors.centerIn: parent
                    text: "Own button"
                }
                TapHandler {}
            }
            Text {
                text: "Not seen"
                visible: false
            }
            Text {
                text: "Transparent"
                opacity: 0
            }
            Item {
                opacity: 0
                implicitHeight: 10
                implicitWidth: 10
                Text { text: "In something transparent" }
            }
            Text {
                text: "Not for readers"
                Accessible.ignored: true
            }
            Frame {
                Label { text: "In a frame" }
            }
            Tumbler { model: 5 }
            PageIndicator { count: 3 }
            BusyIndicator {}
        }
    }
}
