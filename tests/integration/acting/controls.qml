// One of each kind of control, each at a place of its own. What happens to it is said on standard
// error as "did: NAME WHAT"; a test taps and reads.
import QtQuick
import QtQml.Models
import QtQuick.Controls

ApplicationWindow {
    id: window
    width: 640
    height: 700
    visible: true
    title: "Controls"

    function did(what) { console.info("did: " + what) }

    // Turned, mirrored and scaled as the test says, to see that touches follow.
    Item {
        id: ground
        anchors.fill: parent
        rotation: Qt.application.arguments.indexOf("--turned") < 0 ? 0 : 180
        scale: Qt.application.arguments.indexOf("--small") < 0 ? 1 : 0.5

        Button { x: 10; y: 10; width: 120; height: 40; text: "Save"; onClicked: window.did("save clicked") }
        Button { x: 140; y: 10; width: 120; height: 40; text: "Off"; enabled: false; onClicked: window.did("off clicked") }
        CheckBox { x: 270; y: 10; text: "Check"; onToggled: window.did("check " + checked) }
        Switch { x: 400; y: 10; text: "Switch"; onToggled: window.did("switch " + checked) }
        RadioButton { x: 10; y: 60; text: "Radio"; onToggled: window.did("radio " + checked) }
        Slider { x: 140; y: 60; width: 200; from: 0; to: 100; onMoved: window.did("slider " + Math.round(value)) }
        SpinBox { x: 360; y: 60; width: 140; onValueModified: window.did("spin " + value) }
        ComboBox { x: 510; y: 60; width: 120; model: ["One", "Two", "Three"]; onActivated: (index) => window.did("combo " + index) }
        TabBar {
            x: 10; y: 110; width: 300
            TabButton { text: "First"; onClicked: window.did("tab first") }
            TabButton { text: "Second"; onClicked: window.did("tab second") }
        }
        Rectangle {
            x: 320; y: 110; width: 100; height: 40; color: "steelblue"
            TapHandler { onTapped: window.did("tap handler") }
        }
        Rectangle {
            x: 430; y: 110; width: 100; height: 40; color: "tomato"
            MouseArea { anchors.fill: parent; onClicked: (mouse) => window.did("area " + Math.round(mouse.x) + " " + Math.round(mouse.y)) }
            Text { anchors.centerIn: parent; text: "in front" }
        }
        // Blocks what is behind it and does nothing itself.
        Button { x: 540; y: 110; width: 90; height: 40; text: "Behind"; onClicked: window.did("behind clicked") }
        MouseArea { x: 540; y: 110; width: 90; height: 40 }
        Text {
            x: 10; y: 170; width: 300
            text: 'see <a href="there">link</a>'
            onLinkActivated: (link) => window.did("link " + link)
        }
        TextField { id: field; x: 10; y: 200; width: 200; height: 40; onTextEdited: window.did("edited " + text); onActiveFocusChanged: if (activeFocus) window.did("field focus") }
        TextField { x: 220; y: 200; width: 120; height: 40; maximumLength: 5; onTextEdited: window.did("short " + text) }
        TextField { x: 350; y: 200; width: 120; height: 40; validator: IntValidator { bottom: 0; top: 999 } onTextEdited: window.did("number " + text) }
        TextField { x: 480; y: 200; width: 120; height: 40; inputMask: "99-99"; onTextEdited: window.did("mask " + text) }
        TextField { x: 10; y: 250; width: 200; height: 40; readOnly: true; text: "fixed"; onTextChanged: window.did("fixed changed") }
        TextArea { x: 220; y: 250; width: 200; height: 60; onTextChanged: window.did("area text " + text.replace("\n", "|")) }
        Rectangle {
            x: 430; y: 250; width: 100; height: 40; color: "gold"; focus: false
            id: keys
            activeFocusOnTab: true
            Keys.onPressed: (event) => window.did("key " + event.text)
            TapHandler { onTapped: keys.forceActiveFocus() }
        }
        ListView {
            id: list
            x: 10; y: 320; width: 200; height: 160; clip: true
            model: 100
            delegate: ItemDelegate { width: 200; height: 40; text: "Row " + index; onClicked: window.did("row " + index) }
            onContentYChanged: listRest.restart()
            Timer { id: listRest; interval: 400; onTriggered: window.did("list at " + Math.round(list.contentY)) }
        }
        Flickable {
            id: flick
            x: 220; y: 320; width: 200; height: 160; clip: true
            contentWidth: 600; contentHeight: 400
            Rectangle { width: 600; height: 400; gradient: Gradient { GradientStop { position: 0; color: "white" } GradientStop { position: 1; color: "black" } } }
            onContentXChanged: flickRest.restart()
            onContentYChanged: flickRest.restart()
            Timer { id: flickRest; interval: 400; onTriggered: window.did("flick at " + Math.round(flick.contentX) + " " + Math.round(flick.contentY)) }
        }
        SwipeView {
            id: pages
            x: 430; y: 320; width: 200; height: 160; clip: true
            onCurrentIndexChanged: window.did("page " + currentIndex)
            Page { width: 200; height: 160; Label { text: "Page 0" } }
            Page { width: 200; height: 160; Label { text: "Page 1" } }
            Page { width: 200; height: 160; Label { text: "Page 2" } }
        }
        Rectangle {
            x: 60; y: 520; width: 80; height: 80; color: "orchid"; rotation: 45; scale: 0.8
            MouseArea { anchors.fill: parent; onClicked: window.did("turned") }
        }
        Rectangle {
            x: 200; y: 520; width: 80; height: 40; color: "teal"
            transform: Scale { xScale: -1; origin.x: 40 }
            MouseArea { width: 40; height: 40; onClicked: (mouse) => window.did("flipped " + Math.round(mouse.x)) }
        }
        Item {
            x: 320; y: 520; width: 50; height: 40; clip: true
            Button { width: 120; height: 40; text: "Cut"; onClicked: window.did("cut clicked") }
        }
        Button { x: 460; y: 520; width: 80; height: 40; text: "Menu"; onClicked: menu.popup(460, 560) }
        Button { x: 550; y: 520; width: 80; height: 40; text: "Dialog"; onClicked: dialog.open() }
        // A touch on what is disabled goes to what is behind it.
        MouseArea { x: 10; y: 640; width: 120; height: 40; onClicked: window.did("ground") }
        Button { x: 10; y: 640; width: 120; height: 40; text: "Over"; enabled: false; onClicked: window.did("over clicked") }
        MonthGrid {
            x: 150; y: 610; width: 140; height: 80; year: 2026; month: Calendar.November; locale: Qt.locale("en_GB")
            onClicked: (date) => window.did("day " + Qt.formatDate(date, "d"))
        }
        ListModel { id: rows; ListElement { name: "Upper" } ListElement { name: "Lower" } }
        Component {
            id: cell
            Rectangle { required property string name; implicitWidth: 60; implicitHeight: 30; Text { text: name } }
        }
        TableView { // Its cells can be chosen.
            x: 300; y: 620; width: 60; height: 60; model: rows; delegate: cell
            selectionModel: ItemSelectionModel { model: rows; onCurrentChanged: (current) => window.did("chosen " + current.row) }
        }
        TableView { x: 370; y: 620; width: 60; height: 60; model: rows; delegate: cell }
        Button { x: 460; y: 640; width: 80; height: 40; text: "Close"; onClicked: window.close() }
        Button { x: 550; y: 640; width: 80; height: 40; text: "Busy"; onClicked: { window.did("busy"); const end = Date.now() + 1500; while (Date.now() < end) {} } }
    }

    Menu {
        id: menu
        MenuItem { text: "Entry"; onTriggered: window.did("entry") }
        MenuItem { text: "Grey"; enabled: false; onTriggered: window.did("grey") }
    }
    Dialog {
        id: dialog
        x: 100; y: 100; width: 300; height: 200
        modal: true
        closePolicy: Popup.NoAutoClose
        standardButtons: Dialog.Ok
        Button { text: "Inside"; onClicked: window.did("inside clicked") }
        onAccepted: window.did("accepted")
    }
}
