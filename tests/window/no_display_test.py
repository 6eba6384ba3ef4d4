#!/usr/bin/env python3
"""Runs the window's program where it can't show: no_display_test.py PROGRAM."""
import os
import subprocess
import sys
import tempfile
import unittest

SENTENCE = "Tresmor's window needs a graphical display, and none can be reached. tresmor-cli works without.\n"
NO_DISPLAY = 3


class NoDisplay(unittest.TestCase):
    program = ''

    def expect_refusal(self, **display):
        env = {key: value for key, value in os.environ.items()
               if not key.startswith(('XDG_', 'QT_', 'WAYLAND')) and key != 'DISPLAY'}
        with tempfile.TemporaryDirectory() as home:
            env.update(display, HOME=home, XDG_RUNTIME_DIR=home)
            done = subprocess.run([self.program], env=env, capture_output=True, text=True, check=False)
            self.assertEqual((done.returncode, done.stdout, done.stderr), (NO_DISPLAY, '', SENTENCE))
            self.assertEqual(os.listdir(home), [])

    def test_none(self):
        self.expect_refusal()
        self.expect_refusal(DISPLAY='')

    def test_dead(self):
        self.expect_refusal(DISPLAY=':97531')
        self.expect_refusal(WAYLAND_DISPLAY='gone')
        self.expect_refusal(QT_QPA_PLATFORM='gone')


if __name__ == '__main__':
    NoDisplay.program = sys.argv.pop()
    unittest.main()
