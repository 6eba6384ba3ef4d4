#!/usr/bin/env python3
"""A monkey at the real window: clicks, keys, searches, cancels and operations, drawn at random, for as long as is asked.

Usage: window_soak.py PROGRAM MINUTES [SEED]: the program tresmor, best one with sanitizers. It plays on a display of its
own with a home folder of its own, in which somebody else changes files all the time, and can change nothing outside.
The status is 1 if something was wrong, which is told with the seed and the last steps. A picture of
that moment is left in the folder `pictures` beside the program. Needs Xvfb, openbox, xdotool, xprop and ImageMagick.
"""
import collections
import os
import random
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True

from confined import can_confine, confine  # pylint: disable=wrong-import-position
from desk import HELP, MAIN, PATIENCE, Desk, Display, environment, wait_for  # pylint: disable=wrong-import-position
from soak_files import Changer  # pylint: disable=wrong-import-position

QUARANTINE = 16  # megabytes of freed memory that the sanitizer keeps
GROWTH = 1.5  # times as much memory at the end as near the beginning is too much
WARM_UP = .3  # of the steps of a program, until memory is looked at
LEAST_STEPS = 100  # of a program, for that to tell anything
KEPT_STEPS = 40
SETTLE_EVERY = 15  # steps
SESSION = 'soak.Tresmor'
SAVE_SECONDS = 5
# Where things are in the window.
PATH_TAB, PATH_FIELD = (36, 50), (120, 80)
RESULT_TABS = [(50, 274), (140, 274), (140, 274), (245, 274)]
FIRST_ROW, ROW = (80, 318), 14
ROOMY = (1000, 700)  # a size at which all of these are inside

KEYS = ['Tab', 'shift+Tab', 'Up', 'Down', 'Home', 'End', 'Page_Down', 'space', 'ctrl+1', 'ctrl+2', 'ctrl+4', 'ctrl+g',
        'ctrl+t', 'ctrl+c', 'ctrl+o', 'ctrl+e', 'ctrl+f', 'ctrl+p', 'ctrl+v', 'ctrl+k', 'ctrl+r', 'ctrl+x', 'ctrl+l',
        'ctrl+s', 'F1', 'F5', 'alt+m', 'alt+r', 'alt+h', 'alt+n', 'shift+Down', 'ctrl+a', 'Menu', 'Escape', 'Return',
        'BackSpace', 'Left', 'Right', 'alt+u', 'alt+x', 'alt+less']
OPERATIONS = {'Delete files': 'ctrl+d', 'Move files': 'ctrl+m', 'Copy files': 'alt+r c Return'}


class Trouble(Exception):
    pass


class Soak:
    def __init__(self, path, seed, home, logs, display):
        self.path, self.home, self.logs = path, home, logs
        self.tree = os.path.join(home, 'files')
        self.session = os.path.join(home, SESSION)
        self.dice = random.Random(seed)
        self.changer = Changer(self.tree, home, seed + 1)
        self.desk = Desk(display, 1, os.path.join(os.path.dirname(path), 'pictures'), pause=.03)
        self.env = environment(home, display, 1)
        stubs = os.path.join(logs, 'bin')
        os.makedirs(stubs)
        for name in ('xdg-open', 'gio', 'gdbus', 'dbus-send'):
            os.symlink('/bin/true', os.path.join(stubs, name))
        self.env.update(PATH=stubs + ':' + self.env['PATH'], TMPDIR=logs,
                        ASAN_OPTIONS=f'quarantine_size_mb={QUARANTINE}:log_path={logs}/asan')
        self.env['LSAN_OPTIONS'] += ':print_suppressions=0'
        self.figures = collections.Counter()
        self.log = collections.deque(maxlen=KEPT_STEPS)
        self.memory = []  # of the program that runs, by step
        self.peak = 0
        self.start()

    # --- The program

    def start(self):
        with open(os.path.join(self.logs, 'stderr'), 'ab') as errors:
            self.program = subprocess.Popen([self.path], env=self.env, stderr=errors,
                                            preexec_fn=lambda: confine([self.home, self.logs, '/dev']))
        self.figures['programs'] += 1
        self.memory = []
        wait_for(lambda: self.title() or self.program.poll() is not None, 'the first window')

    def check_ended(self):
        """Whether the program has ended, as it may by the menu; but never by itself."""
        if self.program.poll() is None:
            return False
        if self.program.returncode != 0:
            raise Trouble(f'the program ended with {self.program.returncode}')
        return True

    def check_logs(self):
        for name in os.listdir(self.logs):
            if name.startswith('asan'):
                with open(os.path.join(self.logs, name), encoding='utf-8', errors='replace') as file:
                    raise Trouble('a sanitizer says:\n' + file.read())

    def watch_memory(self):
        try:
            with open(f'/proc/{self.program.pid}/status', encoding='ascii') as status:
                lines = dict(line.split(':', 1) for line in status)
            resident = int(lines['VmRSS'].split()[0]) // 1024
        except (OSError, KeyError):
            return
        self.memory.append(resident)
        self.peak = max(self.peak, resident)

    def check_memory(self):
        begin = int(len(self.memory) * WARM_UP)
        part = max(1, (len(self.memory) - begin) // 4)
        early, late = self.memory[begin:begin + part], self.memory[-part:]
        if len(self.memory) > LEAST_STEPS and sorted(late)[part // 2] > GROWTH * sorted(early)[part // 2]:
            raise Trouble(f'the memory grows: {early[0]} MB, then {late[-1]} MB')

    # --- What is on the screen

    def title(self):
        """Of the window that has the keys, '' for none. One that has just gone may still be said to have them."""
        active = self.desk.ask('getactivewindow')
        if not active or active[0] not in self.desk.stack():
            return ''
        return ' '.join(self.desk.ask('getwindowname', active[0]))

    def answer(self):
        """Deals with whatever dialog has the keys. Gives whether it is the main window that has them."""
        title = self.title()
        if title == MAIN:
            return True
        if not title:
            self.expect_keys()
            return False
        keys = ['Escape']
        if title == 'Search completed':
            self.figures['searches'] += 1
            keys = ['Return']
        elif title == 'Cancel Search':
            cancels = self.dice.random() < .5
            self.figures['searches cancelled'] += cancels
            keys = ['alt+y' if cancels else 'alt+n']
        elif title == 'Rename':
            self.desk.type(f'renamed{self.dice.randrange(1000)}.txt')
            keys = ['Return']
        elif title == 'Smart Marking':
            keys = self.dice.choices(['Tab', 'Down', 'space', 'ctrl+Tab', 'alt+m', 'alt+c'], k=4) + \
                [self.dice.choice(['Return', 'Escape'])]
        elif title in OPERATIONS:
            keys = ['Escape']  # they come by intention alone, see operate
        elif self.dice.random() < .5:
            keys = ['Return']
        self.log.append(f'  in "{title}": {" ".join(keys)}')
        self.desk.keys(*keys)
        return False

    def expect_keys(self):
        """Some window gets the keys soon. Nothing here takes them from all: a click on the desktop would."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            if self.title() or self.program.poll() is not None:
                return
            time.sleep(.05)
        raise Trouble('no window has the keys')

    def settle(self):
        """Waits until the main window has the keys and answers one. Gives whether the program still runs."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            if self.check_ended():
                return False
            if self.answer():
                # A menu that is open keeps the keys without a window of its own.
                self.desk.keys('Escape', 'F1')
                if self.appears(HELP, 5):
                    self.desk.keys('Escape')
                    if self.title() == MAIN and not self.desk.windows(HELP):
                        return True
            time.sleep(.05)
        raise Trouble(f'the window doesn\'t answer; "{self.title()}" has the keys')

    def appears(self, title, seconds):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            if self.desk.windows(title):
                return True
            time.sleep(.05)
        return False

    # --- What the monkey does

    def main_window(self):
        windows = self.desk.windows(MAIN)
        return windows[-1] if windows else None

    def click(self):
        window = self.main_window()
        if window is None:
            return
        shape = dict(line.split('=') for line in self.desk.ask('getwindowgeometry', '--shell', window) if '=' in line)
        x, y = self.dice.randrange(int(shape['WIDTH'])), self.dice.randrange(int(shape['HEIGHT']))
        button = self.dice.choice([1, 1, 1, 1, 3])
        self.log.append(f'click {x} {y} {button}')
        self.desk.click(window, x, y, button)

    def press(self):
        keys = self.dice.choices(KEYS, k=self.dice.randrange(1, 5))
        self.log.append('keys ' + ' '.join(keys))
        self.desk.keys(*keys)

    def search(self):
        """Adds the tree, and searches it; sometimes that is cancelled."""
        if not self.settle():
            return
        self.log.append('search')
        self.desk.keys('alt+n')
        window = self.main_window()
        self.desk.click(window, *PATH_TAB)
        self.desk.click(window, *PATH_FIELD)
        self.desk.keys('ctrl+a')
        self.desk.type(self.tree)
        self.desk.keys('alt+greater', 'alt+s')
        for _ in range(20):
            if self.title() == MAIN and self.dice.random() < .2:
                self.desk.keys('alt+c')
            if self.title() == 'Search completed':
                break
            self.answer()
            time.sleep(.05)

    def resize(self):
        window = self.main_window()
        if window is not None:
            self.log.append('resize')
            self.desk.ask('windowsize', window, self.dice.randrange(300, 1500), self.dice.randrange(200, 1200))

    def save(self):
        """Saves what was found, marks and all. Gives whether that worked: a session that could not be loaded has
        switched the command off."""
        before = os.stat(self.session).st_mtime_ns if os.path.exists(self.session) else 0
        self.desk.keys('ctrl+s')
        end = time.monotonic() + SAVE_SECONDS
        while time.monotonic() < end:
            title = self.title()
            if title == 'Tresmor - Save search session as':
                self.desk.keys('ctrl+a')
                self.desk.type(self.session)
                self.desk.keys('Return')
            elif title == 'Include search result':
                self.desk.keys('alt+y')
            elif title == MAIN and os.path.exists(self.session) and os.stat(self.session).st_mtime_ns > before:
                return True
            elif title != MAIN:
                self.desk.keys('alt+y', 'Return')
            time.sleep(.1)
        return False

    def marked(self):
        """The files of all rows that the session has with a mark."""
        with open(self.session, 'rb') as file:
            rows = [line.split(b'|-') for line in file.read().split(b'\r\n')]
        return [row[1] + row[0] for row in rows if len(row) > 3 and row[-1] == b'True']

    def mark(self):
        """Marks a few rows of some list, if what was found is on show."""
        window = self.main_window()
        if window is None:
            return
        self.desk.ask('windowsize', '--sync', window, *ROOMY)
        self.desk.click(window, *self.dice.choice(RESULT_TABS))
        x, y = FIRST_ROW
        self.desk.click(window, x, y + self.dice.randrange(8) * ROW)
        self.desk.keys(*['shift+Down'] * self.dice.randrange(4), 'ctrl+t')

    def operate(self):
        if not self.settle():
            return
        title = self.dice.choice(list(OPERATIONS))
        for_good = title == 'Delete files' and self.dice.random() < .4
        self.log.append(title + (' for good' if for_good else ''))
        self.mark()
        if for_good:
            if not self.save():
                self.log.append('  the session can\'t be saved')
                return
            self.changer.may_grow = False
            with self.changer.lock:
                self.changer.condemn(self.marked())
        self.desk.keys(*OPERATIONS[title].split())
        if self.appears(title, 2):
            self.fill_in(title, for_good)
            self.run_operation(title)
        if for_good and self.settle():
            self.changer.may_grow = True

    def fill_in(self, title, for_good):
        self.desk.window(title)
        if title == 'Delete files':
            # From "No", which has the keys first, back to the choice between the trash and for good.
            self.desk.keys(*['shift+Tab'] * (3 if for_good else 4), 'space')
        else:
            self.desk.keys(*['shift+Tab'] * (7 if title == 'Move files' else 6), 'ctrl+a')
            self.desk.type(os.path.join(self.tree, 'destination'))
            if self.dice.random() < .5:
                self.desk.keys('alt+s')
        if self.dice.random() < .5 and title != 'Copy files':
            self.desk.keys('alt+e')

    def run_operation(self, title):
        before = self.counted()
        self.desk.keys('alt+y')
        end = time.monotonic() + PATIENCE
        while self.desk.windows(title) and time.monotonic() < end:
            if self.title() in ('Deleting files', 'Moving files', 'Copying files'):
                self.desk.keys('alt+y' if self.dice.random() < .9 else 'Escape')
            elif self.title() == 'Tresmor':
                self.desk.keys('Return')
            time.sleep(.05)
        self.figures['operations'] += 1
        for what, files in self.counted().items():
            self.figures[what] += max(0, files - before[what])

    def counted(self):
        """Files in the trash and at the destination."""
        places = {'trashed': os.path.join(self.home, '.local/share/Trash/files'),
                  'moved or copied': os.path.join(self.tree, 'destination')}
        return {what: sum(len(names) for _, _, names in os.walk(place)) for what, place in places.items()}

    # --- The whole

    def step(self):
        self.figures['steps'] += 1
        deed = self.dice.choices([self.click, self.press, self.search, self.resize, self.operate], [30, 30, 6, 2, 6])[0]
        deed()
        if not self.check_ended():
            self.answer()
        self.watch_memory()
        if self.figures['steps'] % SETTLE_EVERY == 0 and self.settle():
            self.check_files()
            self.check_logs()
        if self.check_ended():
            self.log.append('the program has ended and starts again')
            self.start()

    def check_files(self):
        missing = self.changer.missing()
        if missing:
            raise Trouble('lost: ' + ', '.join(f'{files} of {content}' for content, files in missing.items()))

    def end(self):
        if self.settle():
            self.desk.keys('alt+m', 'q')
            wait_for(lambda: self.program.poll() is not None, 'the end of the program')
        self.check_ended()
        self.check_logs()
        self.changer.stop()
        self.check_files()
        self.check_memory()


def report(soak, seed, minutes):
    print(f'window: {minutes:.1f} minutes, seed {seed}')
    figures = {**soak.figures, 'changes by somebody else': soak.changer.changes, 'peak memory (MB)': soak.peak}
    for what, figure in figures.items():
        print(f'  {what:<28} {figure}')


def main():
    if len(sys.argv) not in (3, 4):
        raise SystemExit(__doc__)
    if not can_confine():
        raise SystemExit('This system can\'t keep a program from changing files (Landlock), so no monkey is let loose.')
    path, minutes = os.path.abspath(sys.argv[1]), float(sys.argv[2])
    seed = int(sys.argv[3]) if len(sys.argv) == 4 else 1
    print(f'window: seed {seed}', flush=True)
    begin = time.monotonic()
    with tempfile.TemporaryDirectory(prefix='tresmor-soak-') as home, \
            tempfile.TemporaryDirectory(prefix='tresmor-soak-logs-') as logs, Display() as display:
        soak = Soak(path, seed, home, logs, display.name)
        soak.changer.start()
        failure = None
        try:
            while time.monotonic() < begin + minutes * 60:
                soak.step()
            soak.end()
        except (Trouble, SystemExit) as trouble:
            failure = trouble
            soak.desk.picture('soak')
        finally:
            soak.changer.stop()
            soak.program.kill()
            soak.program.wait()
        if failure:
            print(f'The last steps of seed {seed}:', *soak.log, sep='\n  ')
            print('WRONG:', failure)
        report(soak, seed, (time.monotonic() - begin) / 60)
    if failure:
        raise SystemExit(1)


if __name__ == '__main__':
    main()
