#include "ui/screen_engine.h"

void qml_register_types_Corvane();

namespace corvane {

ScreenEngine::ScreenEngine(AppModel &app, Looks &looks, Commands &commands)
    : m_app(&app)
    , m_looks(&looks)
    , m_commands(&commands)
{
    // The views are in a static library, whose registration the linker would otherwise leave out.
    static const bool registered = (qml_register_types_Corvane(), true);
    Q_UNUSED(registered)
    addImportPath(QStringLiteral("qrc:/qt/qml"));
    for (QObject *shared :
         {static_cast<QObject *>(m_app), static_cast<QObject *>(m_looks), static_cast<QObject *>(m_commands)})
        setObjectOwnership(shared, CppOwnership);
}

} // namespace corvane
