"""Drives a program by real keys and mouse clicks on a display of its own."""
import os
import subprocess
import time

LEAKS_OF_LIBRARIES = os.path.join(os.path.dirname(os.path.abspath(__file__)), 'leaks_of_libraries.txt')
PATIENCE = 60  # seconds to wait for a window or a file: the machine may be busy
SCREEN = '2560x1800x24'
MAIN = 'Tresmor - No Duplicate Files'
HELP = 'Tresmor Help'


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

    def __init__(self, display, scale, pictures, pause=.1):
        self.env = {**os.environ, 'DISPLAY': display}
        self.scale = scale
        self.pictures = pictures
        self.taken = 0
        self.pause = pause  # seconds behind each key, twice that behind a text and thrice behind a click

    def ask(self, *arguments):
        """The words that xdotool answers."""
        return subprocess.run(['xdotool', *map(str, arguments)], env=self.env, capture_output=True, text=True,
                              check=False).stdout.split()

    def windows(self, title):
        return self.ask('search', '--onlyvisible', '--name', '^' + title + '$')

    def stack(self):
        """All windows on the desktop, the one on top last."""
        answer = subprocess.run(['xprop', '-root', '-notype', '_NET_CLIENT_LIST_STACKING'], env=self.env,
                                capture_output=True, text=True, check=False).stdout
        return [str(int(window, 16)) for window in answer.partition('#')[2].split(',') if window.strip()]

    def window(self, title):
        """Waits for a window and gives it the keys."""
        window = wait_for(lambda: self.windows(title), f'the window "{title}"')[-1]
        wait_for(lambda: self.ask('windowactivate', '--sync', window) or
                 self.ask('getactivewindow') == [window], f'the keys for "{title}"')
        return window

    def gone(self, title):
        wait_for(lambda: not self.windows(title), f'the end of "{title}"')

    def keys(self, *keys):
        for key in keys:
            self.ask('key', key)
            time.sleep(self.pause)

    def type(self, text):
        self.ask('type', text)
        time.sleep(2 * self.pause)

    def click(self, window, x, y, button=1):
        """At a place inside the window, as it is at one pixel to a pixel."""
        self.ask('mousemove', '--window', window, int(x * self.scale), int(y * self.scale), 'click', button)
        time.sleep(3 * self.pause)

    def picture(self, name):
        time.sleep(.5)
        os.makedirs(self.pictures, exist_ok=True)
        self.taken += 1
        file = os.path.join(self.pictures, f'{self.taken:02}-{name}.png')
        subprocess.run(['import', '-window', 'root', file], env=self.env, check=True)
        subprocess.run(['convert', file, '-trim', '+repage', file], check=True)


def environment(home, display, scale):
    """That of a program on a desktop without any settings."""
    env = {key: value for key, value in os.environ.items() if not key.startswith(('XDG_', 'QT_', 'WAYLAND'))}
    env.update(HOME=home, DISPLAY=display, QT_SCALE_FACTOR=str(scale), XDG_RUNTIME_DIR=home)
    env['LSAN_OPTIONS'] = f'suppressions={LEAKS_OF_LIBRARIES}'
    return env
