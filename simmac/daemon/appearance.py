"""How the desktop looks, light or dark, and how programs learn of it."""

import os
from dataclasses import dataclass

FOLDER = "/var/lib/desktop"   # outside the home folder, which a reset empties
SYSTEM_SETTINGS = "/etc/xdg"
THEME = "Simmac"


@dataclass(frozen=True)
class Colours:
    """The colours of one appearance, as red, green, blue."""

    ground: str
    bar: str
    title: str
    faint_title: str
    edge: str
    window: str
    field: str
    button: str
    text: str
    faint_text: str


LIGHT = Colours(ground="8fa6bf", bar="ececef", title="3a3a3c", faint_title="a2a2a6", edge="b8b8bd", window="f5f5f7",
                field="ffffff", button="ffffff", text="1d1d1f", faint_text="7c7c80")
DARK = Colours(ground="27313d", bar="2c2c2e", title="dededf", faint_title="7a7a7e", edge="4a4a4d", window="1e1e1e",
               field="1a1a1b", button="3a3a3c", text="f2f2f3", faint_text="8e8e93")
DARK_ACCENT = "0a84ff"

WINDOW_MANAGER = """\
<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <theme>
    <name>{theme}</name>
    <titleLayout>CLIM</titleLayout>
    <keepBorder>yes</keepBorder>
    <font place="ActiveWindow"><name>Inter</name><size>9</size><weight>Bold</weight></font>
    <font place="InactiveWindow"><name>Inter</name><size>9</size><weight>Bold</weight></font>
  </theme>
  <applications>
    <application class="*"><position force="no"><x>center</x><y>center</y></position></application>
  </applications>
  <mouse>
    <context name="Titlebar">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
      <mousebind button="Left" action="Drag"><action name="Move"/></mousebind>
    </context>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
    <context name="Close">
      <mousebind button="Left" action="Click"><action name="Close"/></mousebind>
    </context>
  </mouse>
</openbox_config>
"""
FRAMES = """\
border.width: 1
padding.width: 6
padding.height: 4
window.handle.width: 0
window.client.padding.width: 0
window.label.text.justify: center
*.bg: flat solid
*.bg.color: #{bar}
window.*.border.color: #{edge}
window.*.title.separator.color: #{edge}
window.*.label.bg: parentrelative
window.*.button.*.bg: parentrelative
window.active.label.text.color: #{title}
window.inactive.label.text.color: #{faint_title}
window.active.button.*.image.color: #{title}
window.inactive.button.*.image.color: #{faint_title}
"""


class Appearance:
    """Light is what a program takes by itself; dark it reads from the desktop's own settings."""

    def __init__(self, dark):
        self.dark = dark
        self.colours = DARK if dark else LIGHT

    def furnish(self):
        """Writes what the window manager and the programs read."""
        _write("openbox.xml", WINDOW_MANAGER.format(theme=THEME))
        _write(f"share/themes/{THEME}/openbox-3/themerc", FRAMES.format(**vars(self.colours)))
        if self.dark:
            _write("config/kdeglobals", self._palette())

    def window_manager(self):
        """The window manager's command line and what it needs in its environment."""
        return (["openbox", "--sm-disable", "--config-file", f"{FOLDER}/openbox.xml"],
                {"XDG_DATA_DIRS": f"{FOLDER}/share:/usr/share"})

    def environment(self):
        """What a program of this desktop has in its environment: toolkits know this way of telling colours."""
        if not self.dark:
            return {}
        return {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5",
                "XDG_CONFIG_DIRS": f"{FOLDER}/config:{SYSTEM_SETTINGS}"}

    def _palette(self):
        colours = self.colours
        grounds = {"Window": colours.window, "View": colours.field, "Button": colours.button, "Tooltip": colours.bar}
        lines = []
        for name, ground in grounds.items():
            lines += [f"[Colors:{name}]",
                      f"BackgroundNormal={_triple(ground)}", f"BackgroundAlternate={_triple(colours.bar)}",
                      f"ForegroundNormal={_triple(colours.text)}", f"ForegroundInactive={_triple(colours.faint_text)}",
                      f"ForegroundLink={_triple(DARK_ACCENT)}", f"ForegroundVisited={_triple(DARK_ACCENT)}", ""]
        lines += ["[Colors:Selection]", f"BackgroundNormal={_triple(DARK_ACCENT)}", "ForegroundNormal=255,255,255", ""]
        return "\n".join(lines)


def _triple(colour):
    return ",".join(str(part) for part in bytes.fromhex(colour))


def _write(name, text):
    path = f"{FOLDER}/{name}"
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="ascii") as file:
        file.write(text)
