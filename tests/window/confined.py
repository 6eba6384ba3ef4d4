"""Keeps a program from changing files outside of some folders, whatever is clicked in it: by Linux's Landlock."""
import ctypes
import os
import struct

LIBC = ctypes.CDLL(None, use_errno=True)
CREATE_RULESET, ADD_RULE, RESTRICT_SELF = 444, 445, 446
ASK_VERSION = 1
PATH_BENEATH = 1
NO_NEW_PRIVILEGES = 38
# Write to files; remove folders and files; make any kind of entry; give entries another folder; cut files.
CHANGES = 1 << 1 | 1 << 4 | 1 << 5 | sum(1 << bit for bit in range(6, 13)) | 1 << 13 | 1 << 14
NEEDED_VERSION = 3  # the first one that knows all of these


def call(number, *arguments):
    result = LIBC.syscall(number, *arguments)
    if result < 0:
        raise OSError(ctypes.get_errno(), 'Landlock')
    return result


def can_confine():
    try:
        return call(CREATE_RULESET, None, ctypes.c_size_t(0), ASK_VERSION) >= NEEDED_VERSION
    except OSError:
        return False


def confine(folders):
    """This process, and what it starts, can change files below these alone from now on."""
    ruleset = call(CREATE_RULESET, struct.pack('Q', CHANGES), ctypes.c_size_t(8), 0)
    for folder in folders:
        opened = os.open(folder, os.O_PATH)
        call(ADD_RULE, ruleset, PATH_BENEATH, struct.pack('=Qi', CHANGES, opened), 0)
        os.close(opened)
    if LIBC.prctl(NO_NEW_PRIVILEGES, 1, 0, 0, 0) != 0:
        raise OSError(ctypes.get_errno(), 'prctl')
    call(RESTRICT_SELF, ruleset, 0)
    os.close(ruleset)
