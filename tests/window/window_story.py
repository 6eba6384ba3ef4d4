#!/usr/bin/env python3
"""Drives the window by real keys and mouse clicks on a display of its own, checks what comes of it, and keeps pictures.

Usage: window_story.py PROGRAM PICTURES [LOOK...]: the program tresmor, a folder for the pictures, and the looks to go
through, such as light-1 or dark-2: bright or dark colours, and how many pixels of the screen one of the window has.
Needs Xvfb, openbox, xdotool, xprop and ImageMagick.
"""
import os
import shutil
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True

LOOKS = ['light-1', 'dark-1', 'light-2', 'dark-2']
LEAKS_OF_LIBRARIES = os.path.join(os.path.dirname(os.path.abspath(__file__)), 'leaks_of_libraries.txt')
PATIENCE = 60  # seconds to wait for a window or a file: the machine may be busy
SCREEN = '2560x1800x24'
MAIN = 'Tresmor - No Duplicate Files'
HELP = 'Tresmor Help'

# Colours by which the toolkit knows a dark desktop.
DARK = """[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=239,240,241
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=27,30,32
ForegroundNormal=252,252,252
[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
"""


def wait_for(what, told):
    """The first true value of what() within our patience."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        value = what()
        if value:
            return value
        time.sleep(.1)
    raise SystemExit(f'waited in vain for {told}')


class Display:
    """An X server with a window manager."""

    def __enter__(self):
        read, write = os.pipe()
        self.server = subprocess.Popen(['Xvfb', '-displayfd', str(write), '-screen', '0', SCREEN], pass_fds=[write],
                                       stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as number:
            self.name = ':' + number.readline().strip()
        self.manager = subprocess.Popen(['openbox'], env={**os.environ, 'DISPLAY': self.name},
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        # A window that comes before its manager may never be shown.
        wait_for(self.is_managed, 'the window manager')
        return self

    def is_managed(self):
        answer = subprocess.run(['xprop', '-root', '_NET_SUPPORTING_WM_CHECK'], env={**os.environ, 'DISPLAY': self.name},
                                capture_output=True, text=True, check=False).stdout
        return 'window id' in answer

    def __exit__(self, *_):
        for process in (self.manager, self.server):
            process.terminate()
            process.wait()


class Desk:
    """The user: keys, clicks and eyes."""

    def __init__(self, display, scale, pictures):
        self.env = {**os.environ, 'DISPLAY': display}
        self.scale = scale
        self.pictures = pictures
        self.taken = 0

    def _xdotool(self, *arguments):
        return subprocess.run(['xdotool', *map(str, arguments)], env=self.env, capture_output=True, text=True,
                              check=False).stdout.split()

    def windows(self, title):
        return self._xdotool('search', '--onlyvisible', '--name', '^' + title + '$')

    def window(self, title):
        """Waits for a window and gives it the keys."""
        window = wait_for(lambda: self.windows(title), f'the window "{title}"')[-1]
        wait_for(lambda: self._xdotool('windowactivate', '--sync', window) or
                 self._xdotool('getactivewindow') == [window], f'the keys for "{title}"')
        return window

    def gone(self, title):
        wait_for(lambda: not self.windows(title), f'the end of "{title}"')

    def keys(self, *keys):
        for key in keys:
            self._xdotool('key', key)
            time.sleep(.1)

    def type(self, text):
        self._xdotool('type', text)
        time.sleep(.2)

    def click(self, window, x, y, button=1):
        """At a place inside the window, as it is at one pixel to a pixel."""
        self._xdotool('mousemove', '--window', window, int(x * self.scale), int(y * self.scale), 'click', button)
        time.sleep(.3)

    def picture(self, name):
        time.sleep(.5)
        self.taken += 1
        file = os.path.join(self.pictures, f'{self.taken:02}-{name}.png')
        subprocess.run(['import', '-window', 'root', file], env=self.env, check=True)
        subprocess.run(['convert', file, '-trim', '+repage', file], check=True)


def make_files(top):
    for folder in ('photos/2003', 'backup'):
        os.makedirs(os.path.join(top, folder))
    beach = os.path.join(top, 'photos/2003/beach.jpg')
    subprocess.run(['convert', '-size', '800x600', 'gradient:orange-navy', beach], check=True)
    shutil.copy(beach, os.path.join(top, 'backup/beach.jpg'))
    shutil.copy(beach, os.path.join(top, 'photos/copy of beach.jpg'))
    for number in range(1, 8):
        with open(os.path.join(top, f'photos/p{number}.jpg'), 'wb') as file:
            file.write(bytes([number]) * 3000 * number)
        shutil.copy(os.path.join(top, f'photos/p{number}.jpg'), os.path.join(top, f'backup/q{number}.jpg'))
    for folder in ('photos', 'backup'):
        with open(os.fsencode(top) + b'/' + folder.encode() + b'/odd\nname\xff.txt', 'wb') as file:
            file.write(b'odd')
    open(os.path.join(top, 'photos/empty'), 'wb').close()


def dialogs_of_the_menus(desk):
    """Those that need no search, from the main window back to it."""
    desk.keys('alt+m', 'o')
    desk.window('Options')
    desk.picture('options')
    desk.keys('Tab', 'Tab', 'Tab', 'Tab', 'Tab', 'space')
    desk.window('Reset warnings and tips')
    desk.picture('reset')
    desk.keys('Return')
    desk.gone('Reset warnings and tips')
    desk.window('Options')
    desk.keys('Escape')
    desk.gone('Options')
    desk.window(MAIN)
    desk.keys('alt+h', 'Up', 'Return')
    desk.window('About Tresmor')
    desk.picture('about')
    desk.keys('Return')
    desk.gone('About Tresmor')
    desk.window(MAIN)


def story(desk, home, program):
    """From an empty start to duplicates in the trash, and out."""
    files = os.path.join(home, 'demo')
    make_files(files)
    desk.window('Tip of the Day')
    desk.picture('tip')
    desk.keys('Escape')
    desk.gone('Tip of the Day')
    main = desk.window(MAIN)
    desk.picture('start')
    desk.keys('F1')
    desk.window(HELP)
    desk.keys('ctrl+f')
    desk.type('newest version')
    desk.keys('Return')
    desk.picture('help')
    desk.keys('Escape')
    desk.gone(HELP)
    desk.window(MAIN)
    dialogs_of_the_menus(desk)
    desk.keys('Tab', 'ctrl+a')
    desk.type(files)
    desk.keys('alt+greater')
    desk.picture('added')
    desk.keys('alt+s')
    desk.window('Be patient')
    desk.picture('be-patient')
    desk.keys('Return')
    desk.window('Search completed')
    desk.picture('completed')
    desk.keys('Return')
    desk.window('Smart Marker')
    desk.picture('smart-marker-tip')
    desk.keys('Return')
    desk.gone('Smart Marker')
    main = desk.window(MAIN)
    desk.click(main, 160, 274)
    desk.picture('duplicates')
    desk.click(main, 80, 318)
    desk.picture('preview')
    desk.click(main, 80, 318, button=3)
    desk.picture('tasks')
    desk.keys('Escape')
    desk.keys('ctrl+k')
    desk.window('Smart Marking')
    desk.picture('smart-marking')
    desk.keys('alt+m')
    desk.picture('smart-marking-more')
    # Help stays usable beside a modal dialog.
    desk.keys('F1')
    desk.window(HELP)
    desk.keys('ctrl+f')
    desk.type('keys')
    desk.picture('help-beside')
    desk.keys('Escape')
    desk.gone(HELP)
    desk.window('Smart Marking')
    desk.keys('Escape')
    desk.gone('Smart Marking')
    # All duplicates but the first of each group can go; here the first row is marked by mouse and the next by key.
    desk.click(main, 16, 318)
    desk.keys('Down', 'space')
    desk.picture('marked')
    desk.keys('ctrl+m')
    desk.window('Move files')
    desk.picture('move')
    desk.keys('Escape')
    desk.gone('Move files')
    desk.keys('alt+r', 'c', 'Return')
    desk.window('Copy files')
    desk.picture('copy')
    desk.keys('Escape')
    desk.gone('Copy files')
    desk.window(MAIN)
    desk.keys('ctrl+d')
    desk.window('Delete files')
    desk.picture('delete')
    desk.keys('alt+y')
    trash = os.path.join(home, '.local/share/Trash/files')
    wait_for(lambda: len(desk.windows('Deleting files')) == 2, 'the question over the progress')
    desk.picture('confirm')
    desk.keys('alt+y')
    wait_for(lambda: os.path.isdir(trash) and len(os.listdir(trash)) == 2, 'two files in the trash')
    desk.gone('Delete files')
    desk.window(MAIN)
    desk.picture('deleted')
    desk.keys('alt+m')
    desk.picture('menu')
    desk.keys('q')
    wait_for(lambda: program.poll() is not None, 'the end of the program')
    if program.returncode != 0:
        raise SystemExit(f'the program ended with {program.returncode}')
    if not os.path.exists(os.path.join(home, '.config')):
        raise SystemExit('no settings were kept')


def environment(home, display, scale):
    """That of a program on a desktop without any settings."""
    env = {key: value for key, value in os.environ.items() if not key.startswith(('XDG_', 'QT_', 'WAYLAND'))}
    env.update(HOME=home, DISPLAY=display, QT_SCALE_FACTOR=str(scale), XDG_RUNTIME_DIR=home)
    env['LSAN_OPTIONS'] = f'suppressions={LEAKS_OF_LIBRARIES}'
    return env


def run(path, look, pictures):
    colours, scale = look.split('-')
    folder = os.path.join(pictures, look)
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    with tempfile.TemporaryDirectory(prefix='tresmor-window-') as home, Display() as display:
        env = environment(home, display.name, scale)
        os.makedirs(os.path.join(home, '.config'))
        if colours == 'dark':
            env.update(XDG_CURRENT_DESKTOP='KDE', KDE_SESSION_VERSION='5', KDE_FULL_SESSION='true')
            with open(os.path.join(home, '.config/kdeglobals'), 'w', encoding='ascii') as file:
                file.write(DARK)
        program = subprocess.Popen([path], env=env, stderr=subprocess.DEVNULL)
        try:
            story(Desk(display.name, int(scale), folder), home, program)
        finally:
            program.kill()
            program.wait()
    print(f'{look}: the story is told, its pictures are in {folder}')


def main():
    if len(sys.argv) < 3:
        raise SystemExit(__doc__)
    for look in sys.argv[3:] or LOOKS:
        run(os.path.abspath(sys.argv[1]), look, os.path.abspath(sys.argv[2]))


if __name__ == '__main__':
    main()
