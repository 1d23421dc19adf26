#include "exec/app_paths.h"
#include "exec/replace_file.h"
#include "runtime/pihole_controller.h"

#include <QByteArrayView>
#include <QFile>
#include <QTimeZone>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace corvane {

namespace {

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;
constexpr qint64 kLongest = 64 << 10; // bytes; both files are far shorter

bool mayStandInTimeZone(QChar c) { return c.isLetter() || c.isDigit() || QStringView(u"/_+-").contains(c); }

/// Creates a file with mode 0600, and removes it again unless keep() is called.
class SecretFile {
public:
    explicit SecretFile(const QString &path)
        : m_path(QFile::encodeName(path))
        , m_descriptor(::open(m_path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kOwnerOnly))
    {}
    ~SecretFile()
    {
        if (m_descriptor < 0) return;
        ::close(m_descriptor);
        ::unlink(m_path.constData());
    }
    SecretFile(const SecretFile &) = delete;
    SecretFile &operator=(const SecretFile &) = delete;

    /// The user's file-creation mask may have narrowed what was asked for at creation.
    [[nodiscard]] bool restrict() const { return ::fchmod(m_descriptor, kOwnerOnly) == 0; }

    [[nodiscard]] bool exists() const { return m_descriptor >= 0; }

    [[nodiscard]] bool write(QByteArrayView rest) const
    {
        while (!rest.isEmpty()) {
            const ssize_t written = ::write(m_descriptor, rest.data(), static_cast<std::size_t>(rest.size()));
            if (written < 0 && errno != EINTR) return false;
            rest = rest.sliced(std::max<ssize_t>(written, 0));
        }
        return ::fsync(m_descriptor) == 0;
    }

    void keep()
    {
        ::close(m_descriptor);
        m_descriptor = -1;
    }

private:
    QByteArray m_path;
    int m_descriptor;
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(kLongest) : QByteArray();
}

QByteArray environmentText(const QString &password)
{
    return "FTLCONF_webserver_api_password=" + password.toUtf8() + '\n';
}

std::expected<void, QString> writeSecret(const QString &path, const QByteArray &content)
{
    // If this fails, O_EXCL fails below, because the old file is still there.
    QFile::remove(path);

    SecretFile file(path);
    if (file.exists() && !file.restrict()) return std::unexpected(qt_error_string(errno));
    if (!file.exists() || !file.write(content)) {
        return std::unexpected(QStringLiteral("Could not write the password file."));
    }
    file.keep();
    return {};
}

} // namespace

QString PiholeController::composeFile()
{
    return AppPaths::supportDir().filePath(QStringLiteral("docker-compose.yml"));
}

QString PiholeController::environmentFile() { return AppPaths::supportDir().filePath(QStringLiteral("pihole.env")); }

QString PiholeController::safeTimeZone() { return safeTimeZone(QString::fromUtf8(QTimeZone::systemTimeZoneId())); }

QString PiholeController::safeTimeZone(const QString &identifier)
{
    const bool safe = !identifier.isEmpty() && std::ranges::all_of(identifier, mayStandInTimeZone);
    return safe ? identifier : QStringLiteral("UTC");
}

std::expected<void, QString> PiholeController::writeComposeFile(const QString &tag, int webPort)
{
    return replaceFile(composeFile(), composeText(tag, webPort, safeTimeZone()).toUtf8());
}

std::expected<void, QString> PiholeController::writeFiles(const QString &tag, int webPort, const QString &password)
{
    if (auto written = writeComposeFile(tag, webPort); !written) return written;
    return writeSecret(environmentFile(), environmentText(password));
}

bool PiholeController::filesSay(const QString &tag, int webPort, const QString &password)
{
    const QByteArray compose = contentOf(composeFile());
    const QByteArray environment = contentOf(environmentFile());
    return compose.contains("image: pihole/pihole:" + tag.toUtf8() + '\n') &&
           compose.contains("127.0.0.1:" + QByteArray::number(webPort) + ":80/tcp") &&
           (password.isEmpty() ? !environment.isEmpty() : environment == environmentText(password));
}

} // namespace corvane
