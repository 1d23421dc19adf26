#pragma once

#include <QString>
#include <QUrl>

#include <memory>

namespace corvane {

/// What the desktop does for us: open an address, find an application, hold the clipboard, come to the front.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Opens the address in the user's default program for it; false when nothing could be asked to.
    virtual bool open(const QUrl &address) = 0;
    /// Whether an application with this bundle identifier is installed.
    [[nodiscard]] virtual bool hasApplication(const QString &bundleId) const = 0;
    virtual void copyToClipboard(const QString &text) = 0;
    /// The same for a secret: programs that keep what was copied are asked not to keep it.
    virtual void copySecretToClipboard(const QString &secret) = 0;
    /// Brings Corvane to the front even when another application is active.
    virtual void activate() = 0;
};

/// The desktop this program runs on.
[[nodiscard]] std::unique_ptr<Workspace> systemWorkspace();

} // namespace corvane
