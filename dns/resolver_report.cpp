#include "dns/resolver_report.h"

#include "dns/dns_configurator.h"
#include "dns/dns_detour.h"
#include "dns/text_lines.h"
#include "facts/addresses.h"

#include <algorithm>

namespace corvane {

namespace {

/// What comes after the first colon, without the blanks around it.
QString valueOf(QStringView line) { return trimmedBlanks(line.sliced(line.indexOf(u':') + 1)).toString(); }

/// The name in "24 (utun4)".
QString deviceOf(const QString &index) { return index.section(u'(', 1).section(u')', 0, 0); }

void readLine(QStringView line, ResolverBlock &block)
{
    if (!line.contains(u':')) return;
    if (line.startsWith(u"nameserver[")) block.nameservers += valueOf(line);
    if (line.startsWith(u"domain")) block.domain = valueOf(line);
    if (line.startsWith(u"if_index")) block.device = deviceOf(valueOf(line));
    if (line.startsWith(u"flags")) block.supplemental = valueOf(line).contains(u"Supplemental");
}

bool servesEveryDomain(const ResolverBlock &block) { return !block.domain && !block.nameservers.isEmpty(); }

QStringList warningsFor(const QStringList &servers)
{
    if (servers.first() != kPiholeAddress) {
        return {QStringLiteral("The first DNS server macOS uses is %1, not Pi-hole (127.0.0.1). A VPN, a configuration "
                               "profile or the router (IPv6 DNS) may be overriding it.")
                    .arg(servers.first())};
    }
    QStringList others = servers;
    others.removeAll(kPiholeAddress);
    if (others.isEmpty()) return {};
    return {QStringLiteral("macOS also lists other DNS servers (%1). Queries sent to those bypass Pi-hole.")
                .arg(others.join(QStringLiteral(", ")))};
}

} // namespace

QList<ResolverBlock> DNSConfigurator::parseResolvers(QStringView text)
{
    QList<ResolverBlock> blocks;
    for (const QStringView line : trimmedLines(text)) {
        if (line.startsWith(u"DNS configuration (for scoped queries)")) break;
        if (line.startsWith(u"resolver #")) {
            blocks.emplaceBack();
        } else if (!blocks.isEmpty()) {
            readLine(line, blocks.last());
        }
    }
    return blocks;
}

ResolverReport ResolverReport::of(const QList<ResolverBlock> &blocks)
{
    const auto block = std::ranges::find_if(blocks, servesEveryDomain);
    if (block == blocks.end()) {
        ResolverReport unreadable;
        unreadable.warnings += QStringLiteral("Could not read the system's DNS servers from scutil.");
        return unreadable;
    }
    return {
        .defaultServers = block->nameservers,
        .firstIsPihole = block->nameservers.first() == kPiholeAddress,
        .warnings = warningsFor(block->nameservers),
        .detour = dnsDetour(*block),
    };
}

} // namespace corvane
