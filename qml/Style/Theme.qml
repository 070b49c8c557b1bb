pragma Singleton
import QtQuick 2.15

// The look of the service screen: one palette for a dark room and one for a bright one, one scale
// of type sizes, and one unit from which all distances are made.
QtObject {
    property bool dark: true

    readonly property color background: dark ? "#12161c" : "#f4f6f8"
    readonly property color surface: dark ? "#1b212a" : "#ffffff"
    readonly property color surfaceRaised: dark ? "#252d38" : "#e9eef3"
    readonly property color line: dark ? "#364150" : "#cdd5de"
    readonly property color text: dark ? "#f0f3f6" : "#18202a"
    readonly property color textMuted: dark ? "#a3b0bf" : "#566373"
    readonly property color accent: dark ? "#4fb3bf" : "#00717e"
    readonly property color accentText: dark ? "#062b30" : "#ffffff"
    readonly property color good: dark ? "#5ec27f" : "#15703a"
    readonly property color warning: dark ? "#f0b252" : "#9a5b00"
    readonly property color bad: dark ? "#f2766b" : "#b3261e"

    // The overlay of a control while it is pressed, by a finger or by the space key.
    readonly property color pressed: dark ? "#1effffff" : "#18000000"
    readonly property color dim: dark ? "#b0000000" : "#70000000" // covers the page below a dialog

    readonly property int unit: 8
    readonly property int radius: 10
    readonly property int touch: 48 // the minimum height and width of a touch target

    readonly property int fontSmall: 14
    readonly property int fontBody: 17
    readonly property int fontTitle: 22
    readonly property int fontDisplay: 32
    property string fontFamily: "DejaVu Sans"
    property string monoFamily: "DejaVu Sans Mono"
    readonly property string iconFamily: iconFont.name
    readonly property FontLoader iconFont: FontLoader {
        source: Qt.resolvedUrl("materialdesignicons-webfont.ttf")
    }

    // A name from outside as one line: without line feeds, and without characters that turn the order
    // of the letters around.
    function oneLine(name) {
        return name.replace(/[\u0000-\u001f\u007f-\u009f\u2028-\u202e\u2066-\u2069]/g, " ")
    }

    // The colour of an area that carries text of the same colour.
    function tint(tone) {
        return Qt.rgba(tone.r, tone.g, tone.b, dark ? 0.14 : 0.08)
    }
}
