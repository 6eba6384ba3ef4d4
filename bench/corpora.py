"""Folders of files for measurements, the same on every machine, with the known groups of equal files.

Nothing is hashed to know the groups: every file is made from a description of its bytes, and two files are equal
exactly when their descriptions are.
"""
import collections
import json
import os
import random
import shutil
from typing import NamedTuple, Optional

SEED = 20030702
VERSION = 1  # raise it whenever a plan below changes: corpora made by an older one are made anew
HEAD = 400
STAMP = 16
POOL = 64 << 20
STRETCH = 1 << 20


class Content(NamedTuple):
    """The bytes of a file: pseudo-random from `seed`, then up to one byte changed, the head from a seed of its own."""
    seed: int
    size: int
    change: Optional[tuple] = None  # (position, what the byte there is xor'ed with)
    head: Optional[int] = None


class Maker:
    """Writes contents quickly: bytes are cut from one pool, and a stamp sets unlike contents apart from the start."""

    def __init__(self):
        self.pool = memoryview(random.Random(SEED).randbytes(POOL))

    def write(self, path, content):
        rng = random.Random(content.seed)
        with open(path, 'w+b', buffering=0) as file:
            left = content.size
            while left:
                length = min(left, STRETCH)
                at = int(rng.random() * (POOL - length))
                file.write(self.pool[at:at + length])
                left -= length
            start = 0
            if content.head is not None:
                os.pwrite(file.fileno(), random.Random(content.head).randbytes(HEAD), 0)
                start = HEAD
            os.pwrite(file.fileno(), rng.randbytes(min(STAMP, content.size - start)), start)
            if content.change:
                position, mask = content.change
                old = os.pread(file.fileno(), 1, position)[0]
                os.pwrite(file.fileno(), bytes([old ^ mask]), position)


class Planner:
    """Hands out descriptions: singles, and families of files of one size."""

    def __init__(self, name):
        self.rng = random.Random(f'{SEED} {name}')
        self.seeds = 0

    def seed(self):
        self.seeds += 1
        return self.rng.getrandbits(63) << 24 | self.seeds

    def single(self, size, head=None):
        return Content(self.seed(), size, None, head)

    def near(self, content):
        """Of the same size, with one byte changed near the start, in the middle or at the very end."""
        start = HEAD if content.head is not None else 0
        first = min(start + STAMP, content.size - 1)
        position = self.rng.choice([first, (start + content.size) // 2, content.size - 1])
        return content._replace(change=(position, self.rng.randrange(1, 256)))

    def family(self, size, count, head=None):
        """Copies, near-duplicates and unlike files. The first two are equal."""
        members = [self.single(size, head)] * 2
        while len(members) < count:
            kind = self.rng.random()
            if kind < .45:
                members.append(self.rng.choice(members))
            elif kind < .75:
                members.append(self.near(members[0]))
            else:
                members.append(self.single(size, head))
        return members[:count]

    def crowd(self, size, count, head=None):
        """Many files of one size: families of up to 8 that have nothing to do with each other, and some singles."""
        members = []
        while len(members) < count:
            room = count - len(members)
            if room == 1 or self.rng.random() < .3:
                members.append(self.single(size, head))
            else:
                members += self.family(size, min(room, self.rng.randint(2, 8)), head)
        return members


def plan_small(plan):
    files = []
    while len(files) < 100_000:
        size = int(64 * 512 ** (plan.rng.random() ** .6))  # many little ones, few large ones
        room = 100_000 - len(files)
        if room > 1 and plan.rng.random() < .15:
            files += plan.family(size, min(room, plan.rng.randint(2, 7)))
        else:
            files.append(plan.single(size))
    return files


def plan_medium(plan):
    sizes = iter(plan.rng.sample(range(1 << 20, 11 << 19), 700))
    files = []
    while len(files) < 700:
        room = 700 - len(files)
        size = next(sizes)
        if room > 1 and plan.rng.random() < .25:
            files += plan.family(size, min(room, plan.rng.randint(2, 6)))
        else:
            files.append(plan.single(size))
    return files


def plan_large(plan):
    mega = 1_000_000
    first, second, third = (plan.single(size * mega + 7) for size in (201, 203, 205))
    files = [first] * 2 + [first._replace(change=(first.size - 1, 1)), first._replace(change=(first.size // 2, 1))]
    files += [second] * 2 + [second._replace(change=(STAMP, 1))]
    files += [third] * 2
    return files + [plan.single(size * mega) for size in range(206, 212)]


def plan_runs(plan):
    counts = [143] * 34 + [142] * 7
    sizes = plan.rng.sample(range(60_000, 71_000), len(counts))
    return [content for size, count in zip(sizes, counts) for content in plan.crowd(size, count)]


def plan_heads(plan):
    files = []
    while len(files) < 3_915:
        count = min(plan.rng.randint(20, 240), 3_915 - len(files))
        files += plan.crowd(40_000, count, plan.seed())
    return files


PLANS = {'small': plan_small, 'medium': plan_medium, 'large': plan_large, 'runs': plan_runs, 'heads': plan_heads}


class Corpus(NamedTuple):
    name: str
    folder: str
    paths: list
    bytes: int
    groups: set  # of frozensets of full paths


def folder_tree(rng, count):
    """Relative folders, each below an earlier one."""
    folders = ['']
    while len(folders) < count:
        parent = rng.choice(folders)
        if parent.count('/') < 6:
            folders.append(os.path.join(parent, f'folder {len(folders)}'))
    return folders


def place(rng, contents):
    """A relative path for each content, in shuffled order; names repeat across folders."""
    folders = folder_tree(rng, max(2, len(contents) // 60))
    rng.shuffle(contents)
    taken = set()
    for number, content in enumerate(contents):
        name = rng.choice(['picture', 'report', 'copy of report', 'track', 'data']) + f' {number // 3}.bin'
        path = os.path.join(rng.choice(folders), name)
        if path in taken:
            path = os.path.join(os.path.dirname(path), f'{number}.bin')
        taken.add(path)
        yield path, content


def make(name, folder):
    shutil.rmtree(folder, ignore_errors=True)
    plan = Planner(name)
    contents = PLANS[name](plan)
    maker = Maker()
    groups = collections.defaultdict(list)
    made = set()
    for path, content in place(plan.rng, contents):
        full = os.path.join(folder, path)
        parent = os.path.dirname(full)
        if parent not in made:
            os.makedirs(parent, exist_ok=True)
            made.add(parent)
        maker.write(full, content)
        groups[content].append(path)
    os.sync()
    return {'version': VERSION, 'files': len(contents), 'bytes': sum(content.size for content in contents),
            'groups': [paths for paths in groups.values() if len(paths) > 1]}


def load(name, top, say):
    """The corpus `name` below the folder `top`, made first unless it stands there complete."""
    folder = os.path.join(os.path.abspath(top), name)
    truth_file = folder + '.truth.json'
    truth = None
    if os.path.exists(truth_file):
        with open(truth_file, encoding='utf-8') as file:
            truth = json.load(file)
    paths = [os.path.join(at, name) for at, _, names in os.walk(folder) for name in names]
    if not truth or truth['version'] != VERSION or truth['files'] != len(paths):
        say(f'making {folder} ...')
        if truth:
            os.remove(truth_file)
        truth = make(name, folder)
        with open(truth_file, 'w', encoding='utf-8') as file:
            json.dump(truth, file)
        paths = [os.path.join(at, name) for at, _, names in os.walk(folder) for name in names]
    groups = {frozenset(os.path.join(folder, path) for path in group) for group in truth['groups']}
    return Corpus(name, folder, paths, truth['bytes'], groups)
