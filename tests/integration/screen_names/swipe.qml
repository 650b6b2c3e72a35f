import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

ApplicationWindow {
    visible: true
    width: 500
    height: 400
    title: "Weather"

    function act(word, number) {
        switch (word) {
        case "swipe": view.setCurrentIndex(number); break
        case "tab": bar.setCurrentIndex(number); break
        case "exchange": own.shown = number; break
        }
    }

    SwipeView {
        id: view
        anchors.fill: parent
        Page {
            title: "Today"
            header: TabBar {
                id: bar
                TabButton { text: "Rain" }
                TabButton { text: "Wind" }
            }
            StackLayout {
                anchors.fill: parent
                currentIndex: bar.currentIndex
                Page { title: "Rain"; Label { anchors.centerIn: parent; text: "Rain today" } }
                Page { title: "Wind"; Label { anchors.centerIn: parent; text: "Wind today" } }
            }
        }
        Page {
            title: "Tomorrow"
            Label { anchors.centerIn: parent; text: "Tomorrow" }
        }
        Item {
            id: own
            property int shown: 0
            HourlyView { anchors.fill: parent; visible: own.shown == 0 }
            WeeklyView { anchors.fill: parent; visible: own.shown == 1 }
        }
    }
}
