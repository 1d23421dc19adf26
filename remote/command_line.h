#pragma once

#include "remote/request.h"

#include <QByteArrayList>
#include <QString>

namespace corvane::remote {

/// What the words behind the program's name ask for.
struct CommandLine {
    enum class Wish {
        Open, ///< Nothing for us: the application opens.
        Help,
        Version,
        Ask,     ///< Something of the Corvane that runs.
        Nothing, ///< Words that mean nothing here.
    };

    Wish wish = Wish::Open;
    Request request = {};
    /// The answer is to be read by a program.
    bool json = false;
    /// What is wrong with the words, as a sentence.
    QString mistake = {};

    bool operator==(const CommandLine &) const = default;

    /// Words that begin with a single dash are the system's and the toolkit's.
    [[nodiscard]] static CommandLine of(const QByteArrayList &words);
    [[nodiscard]] static QString help();
};

} // namespace corvane::remote
