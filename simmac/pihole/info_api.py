"""What the web API tells about itself, its machine and its messages."""

import os

from .http import Response

_VERSIONS = {"core": ("v6.2.2", "e7f034d2"), "web": ("v6.5", "f17b1eb7")}
_FTL = {"hash": "8d1add8d", "branch": "master", "version": "v6.4.1", "date": "2025-11-27"}
_UNKNOWN = {"version": None, "hash": None}
_DNSMASQ = """
dns_cache_inserted dns_cache_live_freed dns_queries_forwarded dns_auth_answered dns_local_answered dns_stale_answered
dns_unanswered dnssec_max_crypto_use dnssec_max_sig_fail dnssec_max_work bootp pxe dhcp_ack dhcp_decline dhcp_discover
dhcp_inform dhcp_nak dhcp_offer dhcp_release dhcp_request noanswer leases_allocated_4 leases_pruned_4
leases_allocated_6 leases_pruned_6 tcp_connections dhcp_leasequery dhcp_lease_unassigned dhcp_lease_actve
dhcp_lease_unknown""".split()
_SYSTEM = {"uptime": 4992,
           "memory": {"ram": {"total": 2016480, "free": 216460, "used": 799508, "available": 995673, "%used": 39.6},
                      "swap": {"total": 0, "free": 0, "used": 0, "%used": 0}},
           "procs": 124,
           "cpu": {"nprocs": 2, "%cpu": 9.7, "load": {"raw": [0.9, 0.5, 0.4], "percent": [45.5, 25.5, 20.5]}},
           "ftl": {"%mem": 0.07, "%cpu": 0.05}}
_FILE = {"size": 675840, "type": "Regular file", "mode": "rw-r-----"}
_OWNER = {"user": {"uid": 1000, "name": "pihole", "info": ""}, "group": {"gid": 1000, "name": "pihole"}}
_NO_ADDRESS = {"num_addrs": 0, "name": None, "gw_addr": None}
_CONFIG = {"dhcp_active": False, "dhcp_start": "", "dhcp_end": "", "dhcp_ipv6": False, "dns_domain": "lan",
           "dns_port": 53, "dns_num_upstreams": 1, "dns_dnssec": False, "dns_revServer_active": False}


class InfoApi:
    """Facts, most of which never change."""

    def __init__(self, pihole, statistics):
        self._pihole = pihole
        self._statistics = statistics

    def routes(self):
        return [("GET", "/api/info/version", self._versions), ("GET", "/api/info/ftl", self._ftl),
                ("GET", "/api/info/system", lambda turn: turn.good({"system": _SYSTEM})),
                ("GET", "/api/info/database", self._database), ("GET", "/api/padd", self._padd),
                ("GET", "/api/info/messages", lambda turn: turn.good({"messages": self._messages()})),
                ("GET", "/api/info/messages/count", lambda turn: turn.good({"count": len(self._messages())})),
                ("DELETE", r"/api/info/messages/(\d+)", self._delete)]

    def _versions(self, turn):
        if not self._pihole.knobs.versions:
            return turn.refuse("Failed to read /etc/pihole/versions", None, "internal_error", status=500)
        return turn.good({"version": self._version()})

    def _messages(self) -> list:
        return self._pihole.messages.all()

    def _delete(self, turn, number):
        if not self._pihole.messages.delete(int(number)):
            return turn.with_status(404, {})
        return Response(204, content_type="text/html", headers=turn.cookie)

    @staticmethod
    def _version() -> dict:
        parts = {name: {"local": {"version": version, "branch": "master", "hash": hash_}, "remote": dict(_UNKNOWN)}
                 for name, (version, hash_) in _VERSIONS.items()}
        return {**parts, "ftl": {"local": dict(_FTL), "remote": dict(_UNKNOWN)}, "docker": {"local": None, "remote": None}}

    def _ftl(self, turn):
        pihole, database = self._pihole, self._pihole.gravity.readable
        clients = len(pihole.log.clients())
        counted = self._statistics.counters()
        answered = {"dns_queries_forwarded": counted["forwarded"], "dns_local_answered": counted["cached"]}
        return turn.good({"ftl": {
            "database": _sizes(pihole.gravity, database), "privacy_level": pihole.knobs.privacy,
            "query_frequency": counted["frequency"], "clients": {"total": clients, "active": clients}, "pid": os.getpid(),
            "uptime": 1000 * pihole.uptime(), "%mem": 0.07, "%cpu": 0.05, "allow_destructive": True,
            "dnsmasq": {name: answered.get(name, 0) for name in _DNSMASQ}}})

    def _database(self, turn):
        entries, moment = self._pihole.log.all(), int(self._pihole.clock.now())
        first = entries[0].time if entries else 0
        on_disk = sum(entry.time <= self._pihole.written_at for entry in entries)
        return turn.good({**_FILE, "atime": moment, "mtime": moment, "ctime": moment, "owner": _OWNER,
                          "queries": len(entries), "earliest_timestamp": first, "queries_disk": on_disk,
                          "earliest_timestamp_disk": first if on_disk else 0, "sqlite_version": "3.51.0"})

    def _padd(self, turn):
        pihole, statistics = self._pihole, self._statistics
        counted = statistics.counters()
        clients = statistics.top_clients(False)
        return turn.good({
            "recent_blocked": _first(statistics.recent(1)), "active_clients": len(clients),
            "gravity_size": pihole.gravity.size, "top_domain": _name(statistics.top_domains(False)),
            "top_blocked": _name(statistics.top_domains(True)), "top_client": _name(clients),
            "blocking": "enabled" if pihole.blocking.enabled else "disabled",
            "queries": {name: counted[name] for name in ("total", "blocked", "percent_blocked")},
            "cache": {"size": 10000, "inserted": 0, "evicted": 0}, "system": _SYSTEM, "node_name": "3f2a9c1b7d10",
            "host_model": None, "iface": {"v4": _NO_ADDRESS, "v6": _NO_ADDRESS}, "version": self._version(),
            "config": {**_CONFIG, "privacy_level": pihole.knobs.privacy}, "%mem": 0.07, "%cpu": 0.05, "pid": os.getpid(),
            "sensors": {"cpu_temp": None, "hot_limit": 60, "unit": "C"}})


def _first(entries: list):
    return entries[0] if entries else None


def _name(counted: list):
    return counted[0][0] if counted else None


def _sizes(gravity, database) -> dict:
    def rules(type_, kind):
        found = [rule for rule in database.rules if (rule.type, rule.kind) == (type_, kind)] if database else None
        return {"total": -2, "enabled": -2} if found is None else \
            {"total": len(found), "enabled": sum(rule.enabled for rule in found)}
    counts = {"groups": 1, "lists": len(database.lists), "clients": 0} if database else \
        {"groups": -2, "lists": -2, "clients": -2}
    return {"gravity": gravity.size, **counts,
            "domains": {"allowed": rules("allow", "exact"), "denied": rules("deny", "exact")},
            "regex": {"allowed": rules("allow", "regex"), "denied": rules("deny", "regex")}}
