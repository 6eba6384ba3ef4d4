"""The files of window_soak.py: somebody who changes them all the time, and a ledger of what must still be there."""
import collections
import os
import random
import threading

HEAD = 48  # bytes by which a content is known, and its size
LONG = 400_000_000  # of files that are all holes but for their heads
FOLDERS = ['', 'photos', 'photos/2003', 'photos/2004', 'backup', 'backup/odd name']
MOST_FILES = 300


def content_of(path):
    """By what a file is known; None for one that the soak didn't make."""
    try:
        with open(path, 'rb') as file:
            head = file.read(HEAD)
            return (head, os.fstat(file.fileno()).st_size) if head.startswith(b'soak ') else None
    except OSError:
        return None


def files_below(folder):
    for base, _, names in os.walk(folder):
        for name in names:
            yield os.path.join(base, name)


class Changer(threading.Thread):
    """Files appear, vanish and grow in a tree. `lock` is held for each change, together with its note in the ledger."""

    def __init__(self, top, home, seed):
        super().__init__(daemon=True)
        self.top, self.home = os.fsencode(top), os.fsencode(home)
        self.dice = random.Random(seed)
        self.lock = threading.Lock()
        self.owed = collections.Counter()  # how many files of each content have to be somewhere
        self.condemned = []  # contents, some of which were deleted for good: at most so many files each time
        self.may_grow = True  # unless what is condemned could become another content
        self.over = threading.Event()
        self.made = 0
        self.changes = 0
        for folder in FOLDERS + ['destination']:
            os.makedirs(os.path.join(top, folder), exist_ok=True)
        for _ in range(60):
            self.appear()
        for name in (b'photos/long.avi', b'backup/long.avi', b'backup/longer.avi'):
            self.make(name, b'soak long\n', LONG)

    def folder(self):
        return os.fsencode(self.dice.choice(FOLDERS))

    def make(self, name, head, size):
        path = os.path.join(self.top, name)
        try:
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, 'xb') as file:
                file.write(head)
                file.truncate(size)
        except OSError:
            return
        self.owed[content_of_made(head, size)] += 1

    def appear(self):
        self.made += 1
        twin = self.dice.random() < .6 and self.made > 1
        number = self.dice.randrange(max(1, self.made - 20), self.made) if twin else self.made
        head = b'soak %d\n' % number
        odd = b'\n\xff' if self.dice.random() < .1 else b''
        name = b'%d%s.%s' % (self.dice.randrange(10_000), odd, self.dice.choice([b'txt', b'jpg', b'exe']))
        self.make(os.path.join(self.folder(), name), head, 200 + number * 37 % 70_000)

    def any_file(self):
        folder = os.path.join(self.top, self.folder())
        try:
            names = [entry.path for entry in os.scandir(folder) if entry.is_file(follow_symlinks=False)]
        except OSError:
            return None
        return self.dice.choice(names) if names else None

    def vanish(self):
        """Takes the file to a place of its own first, so that what it notes is what it removes."""
        path = self.any_file()
        aside = os.path.join(self.home, b'.aside')
        if path is None or os.path.basename(path) == b'.aside':
            return
        try:
            os.rename(path, aside)
        except OSError:
            return
        content = content_of(aside)
        os.remove(aside)
        self.owed[content] -= 1

    def grow(self):
        path = self.any_file()
        try:
            with open(path, 'r+b') as file:
                before = content_of(f'/proc/self/fd/{file.fileno()}')
                file.seek(0, os.SEEK_END)
                file.write(b'more')
                file.flush()
                after = content_of(f'/proc/self/fd/{file.fileno()}')
        except (OSError, TypeError):
            return
        self.owed[before] -= 1
        self.owed[after] += 1

    def run(self):
        while not self.over.wait(self.dice.random() * .4):
            with self.lock:
                self.changes += 1
                few = sum(1 for _ in files_below(self.top)) < MOST_FILES
                grow = self.grow if self.may_grow else self.appear
                deed = self.dice.choice([self.appear, self.appear, self.vanish, grow] if few else [self.vanish])
                deed()

    def stop(self):
        self.over.set()
        self.join()

    def condemn(self, paths):
        """The program is about to be told to delete these for good. Their contents may go, once a path."""
        self.condemned.append(collections.Counter(content_of(os.fsencode(path)) for path in paths))

    def missing(self):
        """Contents of which too few files are left, while nobody else changes anything."""
        with self.lock:
            there = collections.Counter(content_of(path) for path in files_below(self.home))
            left = self.owed - there
            for contents in self.condemned:
                left -= contents
            left.pop(None, None)
            # What was deleted for good is owed no more.
            self.owed = collections.Counter({content: files for content, files in there.items() if content})
            self.condemned.clear()
            return left


def content_of_made(head, size):
    return (head + b'\0' * HEAD)[:min(HEAD, size)], size
