"""Giving up the rights that only the daemon needs."""

import ctypes

PR_CAPBSET_DROP, PR_SET_NAME, PR_CAP_AMBIENT, PR_CAP_AMBIENT_CLEAR_ALL = 24, 15, 47, 4
CAPABILITY_VERSION_3 = 0x20080522
LAST_CAPABILITY = 40

_libc = ctypes.CDLL(None, use_errno=True)


class _Header(ctypes.Structure):
    _fields_ = [("version", ctypes.c_uint32), ("pid", ctypes.c_int)]


class _Data(ctypes.Structure):
    _fields_ = [("effective", ctypes.c_uint32), ("permitted", ctypes.c_uint32), ("inheritable", ctypes.c_uint32)]


def drop_all():
    """This process, and what it starts, has no capability any more.

    Whoever holds a low port must do this after binding it: a program without capabilities (lsof run by the user)
    cannot look into one that has some.
    """
    for capability in range(LAST_CAPABILITY + 1):
        _libc.prctl(PR_CAPBSET_DROP, capability, 0, 0, 0)
    _libc.prctl(PR_CAP_AMBIENT, PR_CAP_AMBIENT_CLEAR_ALL, 0, 0, 0)
    header = _Header(CAPABILITY_VERSION_3, 0)
    if _libc.capset(ctypes.byref(header), ctypes.byref((_Data * 2)())) != 0:
        raise OSError(ctypes.get_errno(), "The capabilities could not be given up.")


def set_name(name):
    """The name under which this process is listed."""
    _libc.prctl(PR_SET_NAME, ctypes.c_char_p(name.encode()[:15]), 0, 0, 0)


def free_of_rights(program):
    """The command line that runs a program as an ordinary user of the Mac."""
    return ["/usr/bin/setpriv", "--bounding-set=-all", "--inh-caps=-all", "--ambient-caps=-all", "--", *program]
