// Saves its argument in the keychain and prints what came of it; run where no keychain answers.

#include "exec/keychain.h"

#include <cstdio>

int main(int argc, char **argv)
{
    const bool saved = argc > 1 && corvane::Keychain::save(QString::fromUtf8(argv[argc - 1]));
    const auto loaded = corvane::Keychain::load();
    std::printf("%s, %s", saved ? "saved" : "refused", loaded ? qUtf8Printable(*loaded) : "nothing");
    return 0;
}
