import QtQuick
import QtQuick.Window
import QtWebEngine

// Shows each address of its arguments after the other and says what it hears of its console.
Window {
    id: window
    visible: true
    width: 400
    height: 300
    property var addresses: Qt.application.arguments.filter(word => /^(http|file|data):/.test(word))

    function showNext() {
        if (addresses.length === 0) {
            console.log("done|")
        } else {
            view.url = addresses.shift()
        }
    }

    WebEngineProfile { id: hidden; offTheRecord: true }

    WebEngineView {
        id: view
        anchors.fill: parent
        profile: Qt.application.arguments.includes("hidden") ? hidden : WebEngine.defaultProfile
        onJavaScriptConsoleMessage: (level, message, line, source) =>
            console.log(["console", level, message, line, source].join("|"))
        onLoadingChanged: (request) => {
            if (request.status !== WebEngineView.LoadStartedStatus) {
                late.start()
            }
        }
    }

    Timer {
        id: late
        interval: 500
        onTriggered: {
            console.log("scripts|" + view.profile.userScripts.collection.length)
            console.log("loaded|" + view.url)
            window.showNext()
        }
    }

    Component.onCompleted: showNext()
}
