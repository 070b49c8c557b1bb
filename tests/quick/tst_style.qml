import QtQuick 2.15
import QtTest 1.15
import ZelTools.Style 1.0

Item {
    id: root

    width: 400
    height: 300

    Switch {
        id: toggle
        x: 20
        y: 20
        text: "Heater"
    }
    CheckBox {
        id: box
        y: 100
    }

    TestCase {
        name: "Style"
        when: windowShown

        function luminance(color) {
            const part = value => value <= 0.03928 ? value / 12.92 : Math.pow((value + 0.055) / 1.055, 2.4)
            return 0.2126 * part(color.r) + 0.7152 * part(color.g) + 0.0722 * part(color.b)
        }

        function contrast(one, other) {
            const light = [luminance(one), luminance(other)].sort((a, b) => b - a)
            return (light[0] + 0.05) / (light[1] + 0.05)
        }

        function test_textIsReadable_data() {
            const rows = []
            for (const dark of [true, false]) {
                for (const area of ["background", "surface", "surfaceRaised"]) {
                    for (const text of ["text", "textMuted", "accent", "good", "warning", "bad"])
                        rows.push({ tag: (dark ? "dark " : "light ") + text + " on " + area, dark, area, text })
                }
                rows.push({ tag: (dark ? "dark " : "light ") + "on accent", dark, area: "accent", text: "accentText" })
                // A chip and a dangerous button carry text on a tint of its own colour.
                for (const text of ["textMuted", "accent", "good", "warning", "bad"])
                    rows.push({ tag: (dark ? "dark " : "light ") + text + " on its tint", dark, area: "", text })
            }
            return rows
        }

        function test_textIsReadable(row) {
            Theme.dark = row.dark
            const ratio = contrast(Theme[row.text], Theme[row.area] || Qt.tint(Theme.surface, Theme.tint(Theme[row.text])))
            verify(ratio >= 4.5, ratio)
        }

        function test_fingersHit_data() {
            return ["Button", "IconButton", "TextField", "SearchField", "Switch", "CheckBox", "ComboBox", "SpinBox",
                    "ListRow", "Tabs { model: ['A'] }"].map(type => ({ tag: type }))
        }

        function test_fingersHit(row) {
            const text = "import ZelTools.Style 1.0; " + row.tag + (row.tag.endsWith("}") ? "" : "{}")
            const control = createTemporaryQmlObject(text, root)
            verify(control.implicitHeight >= 44, control.implicitHeight)
            verify(control.implicitWidth >= 44 || row.tag === "ListRow", control.implicitWidth)
        }

        function test_switchByFingerAndByKey() {
            mouseClick(toggle)
            verify(toggle.checked)
            verify(!toggle.visualFocus)
            keyClick(Qt.Key_Tab)
            verify(box.visualFocus)
            keyClick(Qt.Key_Backtab)
            verify(toggle.visualFocus)
            keyClick(Qt.Key_Space)
            verify(!toggle.checked)
            toggle.enabled = false
            mouseClick(toggle)
            verify(!toggle.checked)
        }
    }
}
