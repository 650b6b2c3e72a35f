import QtQuick

// In a widget; its pages take each other's place.
Item {
    id: weather

    property int shown: 0

    function exchange(page) {
        weather.shown = page
    }

    HourlyView {
        anchors.fill: parent
        visible: weather.shown === 0
    }

    WeeklyView {
        anchors.fill: parent
        visible: weather.shown === 1
    }
}
