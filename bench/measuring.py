"""Running a program and telling what it cost; what bench/peers and bench/scale share."""
import os
import subprocess
import sys
import tempfile
from typing import NamedTuple

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.path.join(ROOT, 'build', 'release')
DROP_CACHES = '/proc/sys/vm/drop_caches'


class Cost(NamedTuple):
    wall: float  # seconds
    cpu: float  # seconds, user and system
    memory: int  # bytes at the peak
    status: int


def say(text):
    print(text, file=sys.stderr, flush=True)


def default_folder():
    return os.path.join(tempfile.gettempdir(), 'tresmor-bench')


def add_common_options(parser):
    parser.add_argument('--folder', default=default_folder(), help='where the files are made (default: %(default)s)')
    parser.add_argument('--tresmor', default=os.path.join(BUILD, 'tresmor-cli'), metavar='PATH',
                        help='the program to measure (default: %(default)s)')
    parser.add_argument('--measure', default=os.path.join(BUILD, 'measure'), metavar='PATH',
                        help='the program that measures a command (default: %(default)s)')


def check_folder(folder):
    """The programs look neither into hidden folders nor, some of them, into the system's own."""
    path = os.path.abspath(folder)
    if any(part.startswith('.') for part in path.split('/')) or path.startswith(('/usr/', '/opt/')):
        sys.exit(f'{path}: choose a folder that is neither hidden nor below /usr or /opt')


def check_programs(*paths):
    for path in paths:
        if not os.access(path, os.X_OK):
            sys.exit(f'{path} is missing: build it with ./run first')


def run(measure, command, output, folder=None):
    """Runs `command` in `folder` with its stdout in the file `output`."""
    with tempfile.NamedTemporaryFile('r', prefix='tresmor-cost-') as report, open(output, 'wb') as out:
        subprocess.run([measure, report.name, *command], stdin=subprocess.DEVNULL, stdout=out,
                       stderr=subprocess.DEVNULL, cwd=folder, check=True)
        wall, user, system, kilobytes, status = report.read().split()
    return Cost(float(wall), float(user) + float(system), int(kilobytes) * 1024, int(status))


def find_command(tresmor, folder):
    return [tresmor, 'find', '--types', 'duplicates', '--format', 'groups', folder]


def warm(paths):
    """Reads every file once, so that all tools find them in memory."""
    buffer = bytearray(1 << 20)
    for path in paths:
        with open(path, 'rb', buffering=0) as file:
            while file.readinto(buffer):
                pass


def drop_cache():
    os.sync()
    with open(DROP_CACHES, 'w', encoding='ascii') as file:
        file.write('3')
