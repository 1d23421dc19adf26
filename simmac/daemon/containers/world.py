"""Everything about containers on one Mac, and how it gets into a state."""

import asyncio

from daemon.containers.colima import Colima
from daemon.containers.engine import Engine
from daemon.containers.homebrew import Homebrew
from daemon.containers.real_engine import RealEngine
from daemon.containers.registry import REPOSITORY
from daemon.containers.spec import Port, Spec
from daemon.internet import NAMES
from daemon.states import PASSWORD, SET_UP, TAG, WEB_PORT

from pihole import names as internet_names
from pihole.knobs import Knobs

_PIHOLE_RUNS = ("running", "protected")
_VOLUMES = {"pihole_etc": "/etc/pihole", "pihole_dnsmasq": "/etc/dnsmasq.d"}


class Containers:
    """Homebrew, Colima and the engine, which belong together."""

    def __init__(self, mac):
        self.mac = mac
        self.homebrew = Homebrew(mac)
        self.colima = Colima(mac)
        self.engine = (RealEngine if mac.real_engine else Engine)(mac, self.colima)
        self.colima.engine = self.engine
        self.compose = False       # whether docker has the compose plug-in
        self.old_docker = False    # whether docker speaks as that of Debian 12 does
        mac.network.watchers.append(lambda: asyncio.ensure_future(self.follow_network()))
        _share_names()

    async def enter(self, state):
        """Puts everything as it is at the start of a state."""
        self.engine.check_state(state)
        kept = await self._reusable() if state in _PIHOLE_RUNS else None
        await self.engine.clear(kept)
        fresh = state in ("bare", "homebrew")
        await self.colima.enter(not fresh, not fresh and state not in ("stopped", "dead-engine"), state in SET_UP)
        self.compose = self.old_docker = False
        self.homebrew.reset(state != "bare", () if fresh else ("lima", "colima", "docker"))
        if not fresh:
            await self.engine.machine_is_there(self.colima.running)
        if state in SET_UP:
            await self._install_pihole(kept, running=not state.startswith("dead"))
        await self.colima.forwarder.follow()

    async def _reusable(self):
        """The running Pi-hole, as if it had just been started, if it is the one that a state begins with."""
        found = self.pihole
        plain = found and found.running and found.spec == pihole_spec()
        if not plain or len(self.engine.containers) > 1:
            return None
        return found if await found.begin_anew(PASSWORD) else None

    async def _install_pihole(self, kept, running):
        self.engine.images.add(TAG)
        for name in _VOLUMES:
            self.engine.ensure_volume(name, by_compose=True)
        if kept:
            self.engine.containers[kept.name] = kept
            return
        container = self.engine.create(pihole_spec())
        if running:
            await self.engine.start(container, at_once=True)
        else:
            container.state, container.started, container.ended = "exited", container.created, container.created

    @property
    def pihole(self):
        """The container named pihole, or none."""
        return self.engine.containers.get("pihole")

    async def follow_network(self):
        """Pi-hole's upstream is as far away as the internet is."""
        reachable = self.mac.network.reaches_internet()
        if self.engine.knobs.get("internet", True) != reachable:
            await self.set_knob("internet", reachable)

    async def set_knob(self, name, value):
        """Sets something about the stand-in Pi-hole, now and for its later starts; ValueError for what it has not."""
        checked = Knobs()
        checked.set(name, value)
        self.engine.knobs[name] = getattr(checked, name)
        if self.pihole:
            await self.pihole.ask({"do": "set", "name": name, "value": self.engine.knobs[name]})

    async def set_pace(self, pace):
        """Whether Pi-hole's container takes its true times, whatever the Mac's speed is."""
        self.engine.times.pace = pace
        await self.follow_speed()

    async def set_time(self, name, seconds):
        """Sets one of its times."""
        self.engine.times.set(name, seconds)
        await self.follow_speed()

    async def follow_speed(self):
        """Tells the running Pi-hole how long things take now."""
        for name, value in self.engine.times.knobs().items():
            if self.pihole:
                await self.pihole.ask({"do": "set", "name": name, "value": value})

    def describe(self):
        """The whole as plain data."""
        containers = [{"name": each.name, "image": each.spec.image, "state": each.state, "health": each.health,
                       "pid": each.pid, "error": each.error} for each in self.engine.containers.values()]
        return {"homebrew": self.homebrew.installed, "colima": "running" if self.colima.running else "stopped",
                "forwarder": self.colima.saved_forwarder, "machine": self.colima.machine.describe(), "service": self.homebrew.colima_service, "compose": self.compose,
                "images": sorted(self.engine.images), "volumes": sorted(self.engine.volumes),
                "containers": containers}


def pihole_spec(tag=TAG, web_port=WEB_PORT, password=PASSWORD):
    """The container that Corvane's project describes."""
    ports = [Port("127.0.0.1", 53, 53, "tcp"), Port("127.0.0.1", 53, 53, "udp"),
             Port("127.0.0.1", web_port, 80, "tcp")]
    environment = {"TZ": "UTC", "FTLCONF_dns_upstreams": "1.1.1.1", "FTLCONF_dns_listeningMode": "ALL",
                   "FTLCONF_misc_etc_dnsmasq_d": "true", "FTLCONF_webserver_api_password": password}
    return Spec("pihole", REPOSITORY, tag, "unless-stopped", ports, environment, dict(_VOLUMES), "corvane")


def _share_names():
    """Every resolver of this Mac knows the same names."""
    NAMES.update({name: records["A"] for name, records in internet_names.INTERNET.items() if "A" in records})
    NAMES.update({name: [internet_names.AD_ADDRESS] for name in internet_names.BLOCKED})
