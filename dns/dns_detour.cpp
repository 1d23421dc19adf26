#include "dns/dns_detour.h"

#include "facts/addresses.h"

namespace corvane {

namespace {

/// Whether the interface is one that VPNs make.
bool isTunnel(const QString &device)
{
    return device.startsWith(u"utun") || device.startsWith(u"ppp") || device.startsWith(u"ipsec") ||
           device.startsWith(u"tun") || device.startsWith(u"tap");
}

} // namespace

QString dnsDetour(const ResolverBlock &first)
{
    if (first.nameservers.isEmpty() || first.nameservers.first() == kPiholeAddress) return {};
    const QString server = first.nameservers.first();
    if (isTunnel(first.device)) {
        return QStringLiteral("A VPN (%1) has put its own DNS server first, so nothing is asked of Pi-hole while it is "
                              "connected. Disconnect it, or switch off its own DNS in its settings.")
            .arg(first.device);
    }
    if (first.supplemental) {
        return QStringLiteral("A VPN or a security program has put its own DNS server (%1) before all others, so "
                              "nothing is asked of Pi-hole. Quit it, or switch off its own DNS in its settings.")
            .arg(server);
    }
    // Before this Mac was pointed at Pi-hole the router's server is just what is there.
    if (server.contains(u':') && first.nameservers.contains(kPiholeAddress)) {
        return QStringLiteral("Your router announces its own DNS server over IPv6 (%1), and macOS asks it before "
                              "Pi-hole. Switch that off in the router's settings.")
            .arg(server);
    }
    return {};
}

QString hiddenDnsDetour()
{
    return QStringLiteral("macOS names Pi-hole first, and yet its lookups go elsewhere. An encrypted-DNS profile, "
                          "iCloud Private Relay or a security program takes them without being listed. Look in System "
                          "Settings under 'VPN & Filters' (Network), 'Device Management' (General) and 'Private Relay' "
                          "(iCloud), switch it off, and test again.");
}

} // namespace corvane
