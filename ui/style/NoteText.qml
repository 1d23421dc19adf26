import QtQuick
import Corvane

// A remark in smaller, quieter type.
BodyText {
    font: Theme.callout
    color: Theme.secondaryText
}
