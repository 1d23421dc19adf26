pragma Singleton

import QtQuick
import Corvane

// Every colour, size and font of the screens, by meaning.
QtObject {
    id: root

    readonly property SystemPalette system: SystemPalette {}
    readonly property bool dark: root.system.window.hslLightness < 0.5
    readonly property bool sharp: Looks.increasesContrast

    readonly property color accent: Looks.accent
    readonly property color accentFill: Looks.accentFill(Looks.accent)
    readonly property color accentMark: Looks.accentMark(Looks.accent, root.dark)
    readonly property color accentTrack: Looks.accentTrack(Looks.accent, root.dark)
    readonly property color accentText: "#ffffff"

    readonly property color window: root.dark ? "#1e1e1e" : "#f5f5f7"
    readonly property color sidebar: root.dark ? "#262628" : "#e9e9ed"
    readonly property color box: root.dark ? "#2a2a2c" : "#ffffff"
    readonly property color boxEdge: root.dark ? (root.sharp ? "#98989d" : "#3a3a3c") : (root.sharp ? "#6e6e73" : "#e1e1e5")
    readonly property color divider: root.dark ? (root.sharp ? "#98989d" : "#3a3a3c") : (root.sharp ? "#6e6e73" : "#d9d9de")
    readonly property color text: root.dark ? "#f2f2f3" : "#1d1d1f"
    readonly property color secondaryText: root.dark ? (root.sharp ? "#d6d6da" : "#a9a9ae") : (root.sharp ? "#3a3a3c" : "#636367")
    readonly property color placeholderText: root.dark ? (root.sharp ? "#d1d1d6" : "#98989d") : (root.sharp ? "#48484a" : "#6b6b70")

    readonly property color control: root.dark ? "#59595c" : "#ffffff"
    readonly property color controlPressed: root.dark ? "#6b6b6e" : "#e4e4e8"
    readonly property color controlEdge: root.dark ? (root.sharp ? "#c7c7cc" : "#6a6a6d") : (root.sharp ? "#6e6e73" : "#c8c8cd")
    readonly property color field: root.dark ? "#1a1a1b" : "#ffffff"
    readonly property color switchOff: root.dark ? (root.sharp ? "#7c7c80" : "#545457") : (root.sharp ? "#7c7c80" : "#c9c9ce")
    readonly property color knob: "#ffffff"
    readonly property color track: root.dark ? "#48484a" : "#dcdce0"
    readonly property color logBackground: root.dark ? "#19191a" : "#fbfbfc"
    readonly property color tinted: root.dark ? "#2f3136" : "#eef1f6"
    readonly property color shade: root.dark ? "#99000000" : "#55000000"
    readonly property color scrollBar: root.dark ? "#8e8e93" : "#8e8e93"

    readonly property color green: root.dark ? "#30d158" : "#1b9139"
    readonly property color orange: root.dark ? "#ff9f0a" : "#d9730d"
    readonly property color red: root.dark ? "#ff453a" : "#d70015"
    readonly property color blue: root.dark ? "#409cff" : "#0066d6"
    readonly property color gray: "#8e8e93"
    readonly property color dotGreen: root.dark ? "#30d158" : "#28cd41"
    readonly property color dotOrange: root.dark ? "#ff9f0a" : "#ff9500"
    readonly property color dotRed: root.dark ? "#ff453a" : "#ff3b30"

    // The picture of the day: as far from each other in lightness as each is from the box.
    readonly property color allowed: root.dark ? "#5585bd" : "#86aee0"
    readonly property color blocked: root.dark ? "#c4e0ff" : "#0b4aa8"
    readonly property color quiet: root.dark ? "#8e8e93" : "#86868b"

    readonly property color redText: root.dark ? "#ff6961" : "#c4000f"
    readonly property color orangeText: root.dark ? "#ffb340" : "#a04800"

    readonly property real scale: Math.max(10, Application.font.pixelSize) / 13
    readonly property string family: Application.font.family
    readonly property font body: Qt.font({ family: root.family, preferShaping: false, pixelSize: root.sized(13) })
    readonly property font bodyBold: Qt.font({ family: root.family, preferShaping: false, pixelSize: root.sized(13), weight: Font.DemiBold })
    readonly property font callout: Qt.font({ family: root.family, preferShaping: false, pixelSize: root.sized(12) })
    readonly property font small: Qt.font({ family: root.family, preferShaping: false, pixelSize: root.sized(11) })
    readonly property font headline: Qt.font({ family: root.family, preferShaping: false, pixelSize: root.sized(14), weight: Font.DemiBold })
    readonly property font title: Qt.font({ family: root.family, preferShaping: false, pixelSize: root.sized(22), weight: Font.Medium })
    readonly property font largeTitle: Qt.font({ family: root.family, preferShaping: false, pixelSize: root.sized(26), weight: Font.Bold })
    readonly property font fixed: Qt.font({ family: Looks.fixedFamily, pixelSize: root.sized(12) })
    readonly property font fixedBody: Qt.font({ family: Looks.fixedFamily, pixelSize: root.sized(13) })

    readonly property int gap: 8
    readonly property int padding: 14
    readonly property int radius: 6
    readonly property int boxRadius: 10

    function sized(points: int): int {
        return Math.round(points * root.scale);
    }

    // The colour of a symbol.
    function tint(name: int): color {
        switch (name) {
        case Tint.Accent:
            return root.accent;
        case Tint.Green:
            return root.green;
        case Tint.Orange:
            return root.orange;
        case Tint.Red:
            return root.red;
        case Tint.Blue:
            return root.blue;
        case Tint.Gray:
            return root.gray;
        case Tint.Secondary:
            return root.secondaryText;
        default:
            return root.text;
        }
    }

    // The colour of the status dot.
    function dot(name: int): color {
        switch (name) {
        case Tint.Green:
            return root.dotGreen;
        case Tint.Orange:
            return root.dotOrange;
        case Tint.Red:
            return root.dotRed;
        default:
            return root.gray;
        }
    }

    // The colour of a state of the day's protection.
    function protection(state: int): color {
        switch (state) {
        case 1:
            return root.green;
        case 2:
            return root.blue;
        case 3:
            return root.orange;
        case 4:
            return root.red;
        default:
            return root.quiet;
        }
    }

    function faded(color: color, opacity: real): color {
        return Qt.rgba(color.r, color.g, color.b, opacity);
    }
}
