"""The states that a Mac can start in, and what Corvane left behind in each."""

import os

from daemon.network import write_whole

STATES = ("bare", "homebrew", "stopped", "engine", "running", "protected", "dead", "dead-engine")
SET_UP = ("running", "protected", "dead", "dead-engine")
POINTED = ("protected", "dead", "dead-engine")
PASSWORD = "correct-horse-9"
TAG = "2026.09.0"
WEB_PORT = 8080
SUPPORT = "/Users/ada/Library/Application Support/Corvane"

COMPOSE = """\
# Written by Corvane. Pinned version; ports are bound to this Mac only.
name: corvane
services:
  pihole:
    container_name: pihole
    image: pihole/pihole:{tag}
    restart: unless-stopped
    ports:
      - "127.0.0.1:53:53/tcp"
      - "127.0.0.1:53:53/udp"
      - "127.0.0.1:{port}:80/tcp"
    environment:
      TZ: "UTC"
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
"""


def furnish(mac, state):
    """Puts in place what an earlier set-up left: the project files and the DNS servers."""
    if state in SET_UP:
        write_project(mac)
    if state in POINTED:
        mac.network.set_servers(mac.network.primary(), ["127.0.0.1", "1.1.1.1"])


def write_project(mac, tag=TAG, port=WEB_PORT, password=PASSWORD):
    """Writes the compose project as Corvane does, the password file for the owner only."""
    folder = mac.path(SUPPORT)
    os.makedirs(folder, exist_ok=True)
    write_whole(f"{folder}/docker-compose.yml", COMPOSE.format(tag=tag, port=port))
    write_whole(f"{folder}/pihole.env", f"FTLCONF_webserver_api_password={password}\n", mode=0o600)
