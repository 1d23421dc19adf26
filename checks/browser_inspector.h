#pragma once

#include "checks/browser_info.h"
#include "checks/secure_dns_readers.h"

#include <QCoro/QCoroTask>
#include <QSet>

namespace corvane {

class Workspace;

/// Reads, without changing anything, whether the installed browsers use a DNS server of their own.
class BrowserInspector {
public:
    [[nodiscard]] static bool installed(const Workspace &workspace, const QString &bundleID);
    /// The bundle identifiers of the installed ones among the browsers that are looked at. The workspace is asked, so
    /// this belongs to the main thread.
    [[nodiscard]] static QSet<QString> installedBundles(const Workspace &workspace);

    /// One entry for each browser that is looked at. Reads the files of those that are installed, and no others; meant
    /// for a worker thread.
    [[nodiscard]] static QList<BrowserInfo> scan(const QSet<QString> &installedBundles);

    /// `local`: the path of the browser's "Local State".
    [[nodiscard]] static SecureDNSReading chromiumState(const QString &local);
    /// Of the profile that was used last.
    [[nodiscard]] static SecureDNSReading firefoxState();

    /// Opens the browser, not the default one, at its own settings page.
    [[nodiscard]] static QCoro::Task<> openSettings(BrowserInfo browser);
    /// Opens the address in this browser, whichever the default one is; whether that worked.
    [[nodiscard]] static QCoro::Task<bool> open(BrowserInfo browser, QString address);
};

} // namespace corvane
