#include "runtime/pihole_controller.h"

namespace corvane {

// Pi-hole listens to everyone inside the container; who may reach it is decided by the published addresses. The volumes
// have names of their own, so that "docker run" without the compose plug-in uses the same two.
QString PiholeController::composeText(const QString &tag, int webPort, const QString &timeZone)
{
    return QStringLiteral(R"(# Written by Corvane. Pinned version; ports are bound to this Mac only.
name: corvane
services:
  pihole:
    container_name: pihole
    image: pihole/pihole:%1
    restart: unless-stopped
    ports:
      - "127.0.0.1:53:53/tcp"
      - "127.0.0.1:53:53/udp"
      - "127.0.0.1:%2:80/tcp"
    environment:
      TZ: "%3"
      FTLCONF_dns_upstreams: "1.1.1.1"
      FTLCONF_dns_listeningMode: "ALL"
      FTLCONF_misc_etc_dnsmasq_d: "true"
    env_file:
      - pihole.env
    volumes:
      - pihole_etc:/etc/pihole
      - pihole_dnsmasq:/etc/dnsmasq.d
volumes:
  pihole_etc:
    name: pihole_etc
  pihole_dnsmasq:
    name: pihole_dnsmasq
)")
        .arg(tag, QString::number(webPort), timeZone);
}

} // namespace corvane
