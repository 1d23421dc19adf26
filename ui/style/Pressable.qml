import QtQuick
import QtQuick.Templates as T
import Corvane

// What every control does that is pressed: by mouse, by Space, Return or Enter, or through a screen reader, it has been
// clicked. A key that is held down presses once.
T.AbstractButton {
    id: root

    focusPolicy: Qt.TabFocus
    font: Theme.body
    Accessible.name: root.text
    Accessible.role: Accessible.Button
    Accessible.onPressAction: if (root.enabled) root.clicked()
    Keys.onReturnPressed: event => root.pressByKey(event)
    Keys.onEnterPressed: event => root.pressByKey(event)

    function pressByKey(event: KeyEvent) {
        if (!event.isAutoRepeat)
            root.clicked();
    }
}
