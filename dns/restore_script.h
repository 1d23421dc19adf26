#pragma once

#include "dns/dns_backup.h"
#include "exec/replace_file.h"

#include <mutex>

namespace corvane {

/// The file "Restore DNS.command", which puts the saved DNS servers back without Corvane: a shell script that Finder
/// opens, of nothing but programs that macOS brings.
class RestoreScript {
public:
    [[nodiscard]] static QString file();

    /// It, with its content and its rights.
    [[nodiscard]] static NewContent content(const DNSBackup::Entries &entries);
    /// Every service gets its saved servers, whatever becomes of the others, with one administrator prompt.
    [[nodiscard]] static QByteArray text(const DNSBackup::Entries &entries);

    /// Brings it in step with the backup file where it is not: it is written where it is missing, and goes with the
    /// backup. Returns where it is, empty when it is nowhere.
    [[nodiscard]] static QString keep();

    /// Held while one of the two files is replaced, so that they stay in step.
    [[nodiscard]] static std::mutex &lock();
};

} // namespace corvane
