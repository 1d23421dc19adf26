#include "platform/workspace.h"

#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QProcess>
#include <QWindow>
#include <QXmlStreamReader>

#include <algorithm>

namespace corvane {

namespace {

constexpr qint64 kLargestPropertyList = 1 << 20;

/// The text of an application's property list; nothing when there is no such file, or one of a size that none has.
QByteArray propertyList(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly) || file.size() > kLargestPropertyList) return {};
    return file.read(kLargestPropertyList);
}

/// The bundle identifier in a property list: the text right after its key in the outermost dictionary.
QString bundleIdentifier(const QByteArray &propertyList)
{
    QXmlStreamReader xml(propertyList);
    if (!xml.readNextStartElement() || xml.name() != QLatin1String("plist")) return {};
    if (!xml.readNextStartElement() || xml.name() != QLatin1String("dict")) return {};
    bool isNext = false;
    while (xml.readNextStartElement()) {
        if (isNext) return xml.name() == QLatin1String("string") ? xml.readElementText().trimmed() : QString();
        if (xml.name() == QLatin1String("key"))
            isNext = xml.readElementText() == QLatin1String("CFBundleIdentifier");
        else
            xml.skipCurrentElement();
    }
    return {};
}

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
        return std::ranges::any_of(bundles, [&](const QString &bundle) {
            const QString list = applications.filePath(bundle + QStringLiteral("/Contents/Info.plist"));
            return bundleIdentifier(propertyList(list)) == bundleId;
        });
    }

    void copyToClipboard(const QString &text) override { QGuiApplication::clipboard()->setText(text); }

    void copySecretToClipboard(const QString &secret) override
    {
        auto data = std::make_unique<QMimeData>();
        data->setText(secret);
        data->setData(QStringLiteral("x-kde-passwordManagerHint"), "secret");
        QGuiApplication::clipboard()->setMimeData(data.release());
    }

    void activate() override
    {
        if (QGuiApplication::focusWindow()) return; // already in front
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
