// A web view that says what its page says.
import QtQuick
import QtWebEngine

Window {
    width: 400
    height: 300
    visible: true

    WebEngineView {
        anchors.fill: parent
        url: Qt.resolvedUrl("scrolling.html")
        onJavaScriptConsoleMessage: (level, message) => console.info(message)
    }
}
