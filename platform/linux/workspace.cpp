#include "platform/workspace.h"

#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QWindow>

namespace corvane {

namespace {

/// The desktop of a simulated Mac, asked the way a Mac is: "open" for addresses, bundles in /Applications.
class LinuxWorkspace final : public Workspace {
public:
    bool open(const QUrl &address) override
    {
        return QProcess::startDetached(QStringLiteral("/usr/bin/open"), {address.toString(QUrl::FullyEncoded)});
    }

    [[nodiscard]] bool hasApplication(const QString &bundleId) const override
    {
        const QDir applications(QStringLiteral("/Applications"));
        const QStringList bundles = applications.entryList({QStringLiteral("*.app")}, QDir::Dirs);
        for (const QString &bundle : bundles) {
            QFile info(applications.filePath(bundle + QStringLiteral("/Contents/Info.plist")));
            if (!info.open(QIODevice::ReadOnly)) continue;
            const QByteArray id = "<string>" + bundleId.toUtf8() + "</string>";
            if (info.read(1 << 20).contains(id)) return true;
        }
        return false;
    }

    void copyToClipboard(const QString &text) override { QGuiApplication::clipboard()->setText(text); }

    void activate() override
    {
        const QWindowList windows = QGuiApplication::topLevelWindows();
        for (QWindow *window : windows) {
            if (!window->isVisible()) continue;
            window->raise();
            window->requestActivate();
        }
    }
};

} // namespace

std::unique_ptr<Workspace> systemWorkspace() { return std::make_unique<LinuxWorkspace>(); }

} // namespace corvane
