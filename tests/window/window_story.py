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

sys.dont_write_bytecode = True

from desk import HELP, MAIN, Desk, Display, environment, wait_for  # pylint: disable=wrong-import-position

LOOKS = ['light-1', 'dark-1', 'light-2', 'dark-2']

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
    tip = wait_for(lambda: desk.windows('Tip of the Day'), 'the tip')
    wait_for(lambda: desk.ask('getactivewindow') == tip, 'the keys for the tip')
    if desk.stack() != desk.windows(MAIN) + tip:
        raise SystemExit('the tip isn\'t in front of the window')
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
