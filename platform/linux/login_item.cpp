#include "platform/login_item.h"

#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>
#include <QStandardPaths>

namespace corvane {

namespace {

/// An XDG autostart entry, this desktop's counterpart of a login item.
class AutostartEntry final : public LoginItem {
public:
    [[nodiscard]] Status status() const override
    {
        return QFile::exists(path()) ? Status::Enabled : Status::NotRegistered;
    }

    std::expected<void, QString> setEnabled(bool enabled) override
    {
        if (enabled) return write();
        QFile file(path());
        if (!file.exists() || file.remove()) return {};
        return std::unexpected(file.errorString());
    }

private:
    static QString folder()
    {
        return QStandardPaths::writableLocation(QStandardPaths::ConfigLocation) + QStringLiteral("/autostart");
    }
    static QString path() { return folder() + QStringLiteral("/corvane.desktop"); }

    static std::expected<void, QString> write()
    {
        QDir().mkpath(folder());
        QSaveFile file(path());
        const QString text = QStringLiteral("[Desktop Entry]\nType=Application\nName=Corvane\nExec=\"%1\"\n")
                                 .arg(QCoreApplication::applicationFilePath());
        // Unbuffered, because a buffered write to a full disk fails only where QSaveFile does not look.
        const QByteArray bytes = text.toUtf8();
        if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(bytes) == bytes.size() &&
            file.commit())
            return {};
        return std::unexpected(file.errorString());
    }
};

} // namespace

std::unique_ptr<LoginItem> systemLoginItem() { return std::make_unique<AutostartEntry>(); }

} // namespace corvane
