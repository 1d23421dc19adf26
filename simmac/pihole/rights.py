"""Giving up the right to bind low ports once they are bound."""

import ctypes

_VERSION_3 = 0x20080522
_PR_CAPBSET_DROP = 24
_LAST_CAPABILITY = 40


def give_up() -> None:
    """Leaves this process without any capability, so that programs without one may look into it."""
    libc = ctypes.CDLL(None)
    for capability in range(_LAST_CAPABILITY + 1):
        libc.prctl(_PR_CAPBSET_DROP, capability, 0, 0, 0)
    header = (ctypes.c_uint32 * 2)(_VERSION_3, 0)
    libc.capset(header, (ctypes.c_uint32 * 6)())
