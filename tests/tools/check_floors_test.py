#!/usr/bin/env python3
"""Feeds tools/check_floors small trees, good and bad."""
import os
import subprocess
import tempfile
import unittest

CHECK = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', '..', 'tools', 'check_floors')


class CheckFloors(unittest.TestCase):
    def run_on(self, path, include):
        """Checks a tree whose only file has this one include."""
        with tempfile.TemporaryDirectory() as top:
            file_path = os.path.join(top, path)
            os.makedirs(os.path.dirname(file_path), exist_ok=True)
            with open(file_path, 'w', encoding='utf-8') as file:
                file.write(f'#pragma once\n#include {include}\n')
            return subprocess.run([CHECK, top], capture_output=True, text=True, check=False)

    def passes(self, path, include):
        done = self.run_on(path, include)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)

    def fails(self, path, include, why):
        done = self.run_on(path, include)
        self.assertEqual(done.returncode, 1, done.stdout + done.stderr)
        self.assertIn(f'{path}:2: ', done.stdout)
        self.assertIn(why, done.stdout)

    def test_own_floor_and_floors_below(self):
        self.passes('base/path.cpp', '"base/path.h"')
        self.passes('search/walk.h', '"platform/file_system.h"')
        self.passes('results/rows.h', '"controls/list_view.h"')
        self.passes('scope/page.h', '"results/rows.h"')
        self.passes('shell/main_form.h', '"marker/rules.h"')
        self.passes('platform/posix/files.h', '"platform/file_system.h"')
        self.passes('cli/find.cpp', '"platform/posix/files.h"')
        self.passes('picture/read.cpp', '"platform/posix/files.h"')
        self.passes('app/main.cpp', '"qt/window.h"')

    def test_up(self):
        self.fails('base/path.h', '"platform/file_system.h"', 'points from base to platform')
        self.fails('search/walk.h', '"desk/job.h"', 'points from search to desk')
        self.fails('results/rows.h', '"scope/page.h"', 'points from results to scope')
        self.fails('desk/job.h', '"shell/main_form.h"', 'points from desk to shell')
        self.fails('shell/main_form.cpp', '"cli/find.h"', 'points from shell to cli')
        self.fails('shell/main_form.cpp', '  "qt/window.h"', 'points from shell to qt')

    def test_sideways(self):
        self.fails('search/walk.h', '"controls/list_view.h"', 'points from search to controls')
        self.fails('controls/list_view.h', '"search/walk.h"', 'points from controls to search')
        self.fails('marker/rules.h', '"fileops/move.h"', 'points from marker to fileops')
        self.fails('cli/find.cpp', '"qt/window.h"', 'points from cli to qt')
        self.fails('picture/read.cpp', '"results/rows.h"', 'points from picture to results')

    def test_adapters_stay_out_of_sight(self):
        self.fails('platform/file_system.h', '"platform/posix/files.h"', 'points from platform to platform/posix')
        self.fails('search/walk.h', '"platform/posix/files.h"', 'points from search to platform/posix')
        self.fails('platform/posix/files.h', '"search/walk.h"', 'points from platform/posix to search')

    def test_angle_brackets_hide_nothing(self):
        self.fails('base/path.h', '<platform/file_system.h>', 'points from base to platform')

    def test_paths_from_src_on(self):
        self.fails('base/path.cpp', '"path.h"', 'not written from src/ on')
        self.fails('search/walk.cpp', '"../base/path.h"', 'not written from src/ on')
        self.fails('search/walk.cpp', '"base/../desk/job.h"', 'not written from src/ on')

    def test_system_headers(self):
        for header in ['<unistd.h>', '<sys/stat.h>', '<fcntl.h>', '<dirent.h>']:
            self.passes('platform/posix/files.cpp', header)
            self.passes('cli/main.cpp', header)
            self.fails('search/walk.cpp', header, 'names a system header')
            self.fails('cli/find.cpp', header, 'names a system header')
        self.passes('picture/limits.cpp', '<sys/resource.h>')
        self.fails('picture/read.cpp', '<unistd.h>', 'names a system header')
        self.passes('search/walk.cpp', '<vector>')

    def test_unknown_folder(self):
        done = self.run_on('attic/old.h', '<vector>')
        self.assertEqual(done.returncode, 1)
        self.assertIn('attic/old.h: is in no floor', done.stdout)

    def test_missing_folder(self):
        done = subprocess.run([CHECK, '/nonexistent'], capture_output=True, text=True, check=False)
        self.assertNotEqual(done.returncode, 0)


if __name__ == '__main__':
    unittest.main()
