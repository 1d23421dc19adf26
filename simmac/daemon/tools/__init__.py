"""The tools that the Mac plays: name to `async function(call) -> exit status`.

A tool is one module of this package. It registers itself:

    from daemon.tools import tool

    @tool("sw_vers", at="/usr/bin/sw_vers")
    async def sw_vers(call):
        await call.out("ProductName:\t\tmacOS\n")
        return 0
"""

import importlib
import pkgutil

TOOLS = {}
PLACES = {}


def tool(name, at=None):
    """Registers a tool. `at` is where it always stands; without it the tool appears with `mac.install_tool(name)`."""
    def register(function):
        TOOLS[name] = function
        if at:
            PLACES[name] = at
        return function
    return register


def load_all():
    """Imports every module of this package, so that each registers its tools."""
    for module in pkgutil.iter_modules(__path__):
        importlib.import_module(f"{__name__}.{module.name}")
    return TOOLS
