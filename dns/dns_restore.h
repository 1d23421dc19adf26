#pragma once

#include <QString>

#include <optional>

namespace corvane {

/// How putting the old DNS servers back went.
struct DNSRestore {
    /// Why it failed, as a sentence for the user; absent when everything that can be put back is back.
    std::optional<QString> failure;
    /// Which services were left out and why, as sentences for the user; mostly empty.
    QString remark;
};

} // namespace corvane
