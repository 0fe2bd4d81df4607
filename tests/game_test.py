"""Plays the real FiveInARow.exe from outside: by mouse and keys, judged by its windows, pixels and sounds.

    tools/virtual-display tools/under-wine /usr/bin/python3 tests/game_test.py [GameTest.TEST...]

In the environment, FIAR_INPUTS=20000 and FIAR_SEED=42 say how long the random use is and from which seed. After a test
that has waited in vain, build/game_test.png shows the screen.
"""

import contextlib
import os
import pathlib
import random
import re
import statistics
import subprocess
import tempfile
import time
import unittest

from Xlib import X, XK, display, error
from Xlib.ext import xtest
from Xlib.protocol.event import ClientMessage

SOURCES = pathlib.Path(__file__).resolve().parent.parent
GAME = SOURCES / "build/windows/FiveInARow.exe"
INPUTS = max(30, int(os.environ.get("FIAR_INPUTS", 500)))
SEED = int(os.environ.get("FIAR_SEED", 1))
LIMIT = 40  # seconds, ample for anything anywhere

DISPLAY = display.Display()
ROOT = DISPLAY.screen().root
# Never seen; the window manager's answers go to it.
OWN_WINDOW = ROOT.create_window(0, 0, 1, 1, 0, X.CopyFromParent)

# The form's design in twips: left, top, width, height.
FORM_WIDTH, FORM_HEIGHT = 12060, 10170
BOARD = 1965, 90, 9960, 9960
SIZE_LIST = 120, 1800, 1695, 315
START = 120, 2220, 1695, 555
START_FACE = 300, 2350, 400, 300  # beside its text
SOUND = 180, 9720, 1455, 315

BOARD_SIZES = [10, 15, 20, 30]
BOARD_COLOR, GRID_COLOR, FOCUS_COLOR, RED = 0xFEF3E2, 0x999999, 0xE06000, 0xFF8080
# What lies in a cell: nothing, a stone of the player (red) or of the computer (blue), one of a won line.
MEANINGS = {BOARD_COLOR: ".", RED: "r", 0x8080FF: "b", 0xC00000: "R", 0x0000C0: "B"}


def wait_for(condition):
    """Returns what condition() gives as soon as that is true."""
    end = time.monotonic() + LIMIT
    while time.monotonic() < end:
        # A window may vanish between two requests, or reach over the edge of the screen, or not be painted yet.
        with contextlib.suppress(error.BadWindow, error.BadDrawable, error.BadMatch, KeyError):
            if result := condition():
                return result
        time.sleep(0.005)
    subprocess.run(["import", "-window", "root", SOURCES / "build/game_test.png"])
    raise AssertionError("does not come true")


def ask_manager(window, message, *data):
    kind, data = DISPLAY.intern_atom(message), [*data, 0, 0, 0, 0, 0][:5]
    ROOT.send_event(ClientMessage(window=window, client_type=kind, data=(32, data)),
                    event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
    DISPLAY.sync()


def move(left, top, width=0, height=0):
    """Moves the mouse to a place, or to the middle of an area."""
    xtest.fake_input(DISPLAY, X.MotionNotify, x=int(left + width / 2), y=int(top + height / 2))
    DISPLAY.sync()


def press(button):
    xtest.fake_input(DISPLAY, X.ButtonPress, button)
    # The window manager gets every press first and holds back what follows.
    answer = DISPLAY.intern_atom("_NET_FRAME_EXTENTS")
    OWN_WINDOW.delete_property(answer)
    ask_manager(OWN_WINDOW, "_NET_REQUEST_FRAME_EXTENTS")
    wait_for(lambda: OWN_WINDOW.get_full_property(answer, X.AnyPropertyType))


def release(button):
    xtest.fake_input(DISPLAY, X.ButtonRelease, button)
    DISPLAY.sync()


def click():
    press(1)
    release(1)


def type_keys(*keys):
    """Types keys, some of them with another one held: "Tab", "Shift_L+Tab"."""
    for key in keys:
        codes = [DISPLAY.keysym_to_keycode(XK.string_to_keysym(name)) for name in key.split("+")]
        for code in codes:
            xtest.fake_input(DISPLAY, X.KeyPress, code)
        for code in reversed(codes):
            xtest.fake_input(DISPLAY, X.KeyRelease, code)
    DISPLAY.sync()


def look(left, top, width, height):
    """The pixels of a part of the screen as 0xRRGGBB, row by row."""
    return memoryview(ROOT.get_image(left, top, width, height, X.ZPixmap, 0xFFFFFF).data).cast("I")


def all_windows():
    found = ROOT.get_full_property(DISPLAY.intern_atom("_NET_CLIENT_LIST"), X.AnyPropertyType)
    return {DISPLAY.create_resource_object("window", number) for number in (found.value if found else ())}


def end(process):
    process.kill()
    process.wait()


def empty_cells(position):
    return [cell for cell in position if position[cell] == "."]


def value(position, cell):
    """What an empty cell is worth to the player: the stones count that share a line of five with it alone."""
    total = 0
    for right, down in (1, -1), (1, 0), (1, 1), (0, 1):
        ray = [position.get((cell[0] + i * right, cell[1] + i * down), "edge") for i in range(-4, 5)]
        for line in (ray[first:first + 5] for first in range(5)):
            for side, weight in ("r", 1.1), ("b", 1):
                if set(line) <= {".", side}:
                    total += weight * 10 ** line.count(side)
    return total


class Game:
    """The game, by mouse. A cell is (column, row); a position is a dictionary of what lies in each cell."""

    def __init__(self, test, *command, board=True):
        self.older_windows = all_windows()
        self.process = subprocess.Popen([os.environ["WINE"], *(command or [GAME])], stdin=subprocess.DEVNULL)
        test.addCleanup(self.stop)
        self.window = wait_for(lambda: all_windows() - self.older_windows).pop()
        if board:
            wait_for(lambda: DISPLAY.get_input_focus().focus == self.window)
            self.size = 15
            self.player_opens = False
            wait_for(lambda: self.start_is_shown() and self.stones() == "")

    def stop(self):
        end(self.process)
        wait_for(lambda: all_windows() <= self.older_windows)

    def client_area(self):
        corner, size = ROOT.translate_coords(self.window, 0, 0), self.window.get_geometry()
        return corner.x, corner.y, size.width, size.height

    def place(self, part):
        """Where a part of the form is on the screen."""
        left, top, width, height = self.client_area()
        scale = min(width / FORM_WIDTH, height / FORM_HEIGHT)
        left += (width - round(FORM_WIDTH * scale)) // 2
        top += (height - round(FORM_HEIGHT * scale)) // 2
        pixels = [round(twips * scale) for twips in part]
        return left + pixels[0], top + pixels[1], pixels[2], pixels[3]

    def click_on(self, part):
        move(*self.place(part))
        click()

    def start_is_shown(self):
        return len(set(look(*self.place(START_FACE)))) == 1

    def cell_centres(self, board_width):
        return [(2 * i + 1) * board_width // (2 * self.size) for i in range(self.size)]

    def position(self):
        """What lies in each cell; a KeyError where that is something else."""
        board = self.place(BOARD)
        pixels, width, centres = look(*board), board[2], list(enumerate(self.cell_centres(board[2])))
        return {(column, row): MEANINGS[pixels[y * width + x]] for column, x in centres for row, y in centres}

    def stones(self):
        return "".join(sorted(self.position().values())).strip(".")

    def grid_is_sharp(self):
        """Whether there are a row and a column that show equal lines at equal distances and nothing else."""
        board = self.place(BOARD)
        text = "".join({GRID_COLOR: "#", BOARD_COLOR: "."}.get(pixel, "?") for pixel in look(*board))
        width, centres = board[2], self.cell_centres(board[2])
        # The lines take some of each cell.
        pattern = rf"(#+)(\.{{{width // self.size - 4},{width // self.size}}}\1){{{self.size}}}"
        rows, columns = [text[y * width:(y + 1) * width] for y in centres], [text[x::width] for x in centres]
        return all(any(re.fullmatch(pattern, line) for line in lines) for lines in (rows, columns))

    def point_at(self, cell):
        left, top, width, _ = BOARD
        step = width / self.size
        inside = self.place((left + (cell[0] + 0.1) * step, top + (cell[1] + 0.1) * step, 0.8 * step, 0.8 * step))
        move(*inside)
        wait_for(lambda: RED in look(*inside))

    def set_stone(self, cell):
        self.point_at(cell)
        click()

    def start(self):
        self.click_on(START)
        self.await_opening()

    def await_opening(self):
        """Waits for the first position of a new game. The sides take turns in opening one."""
        self.player_opens = not self.player_opens
        wait_for(lambda: not self.start_is_shown() and self.stones() == ("" if self.player_opens else "b"))

    def choose_size(self, size):
        self.click_on(SIZE_LIST)
        # Its window has no frame, so that it lies right on the screen.
        window = wait_for(lambda: [window for window in ROOT.query_tree().children if window.get_wm_class()
                                   and window.get_attributes().map_state == X.IsViewable])[0]
        area = window.get_geometry()
        height = area.height / len(BOARD_SIZES)
        move(area.x, area.y + BOARD_SIZES.index(size) * height, area.width, height)
        click()
        self.size = size
        wait_for(self.grid_is_sharp)

    def resize(self, *size):
        """To a width and a height; without them, to the whole screen. Waits until the board has its corner there."""
        states = [DISPLAY.intern_atom("_NET_WM_STATE_MAXIMIZED_" + way) for way in ("VERT", "HORZ")]
        ask_manager(self.window, "_NET_WM_STATE", not size, *states)
        if size:
            self.window.configure(width=size[0], height=size[1])
        wait_for(lambda: self.client_area()[2:] == size if size else self.client_area()[2] > 1800)
        wait_for(lambda: look(*self.place(BOARD))[-1] in (GRID_COLOR, FOCUS_COLOR))

    def play(self, cell):
        """Sets a stone and waits for the computer's. Returns the position."""
        before = self.position()
        self.set_stone(cell)

        def answered():
            after = self.position()
            new = {place: after[place].lower() for place in after if after[place].lower() != before[place]}
            return after if new.pop(cell, "") == "r" and [*new.values()] == ["b"] else None

        return wait_for(answered)

    def play_to_the_end(self, choose):
        """Plays the cells that choose() takes by their values until a line is won. Returns its side."""
        position = self.position()
        while not (line := "".join(filter(str.isupper, position.values()))):
            position = self.play(choose(empty_cells(position), key=lambda cell: value(position, cell)))
        assert line in ("RRRRR", "BBBBB"), line
        wait_for(self.start_is_shown)
        return line[0]


class GameTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        """Starts a sound server of the test's own, which plays to nobody but can be recorded."""
        folder = cls.enterClassContext(tempfile.TemporaryDirectory())
        os.environ.update(PULSE_SERVER=f"unix:{folder}/native", PULSE_RUNTIME_PATH=folder, PULSE_STATE_PATH=folder)
        cls.addClassCleanup(end, subprocess.Popen([
            "pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--log-level=error",
            "--load=module-null-sink", "--load=module-native-protocol-unix auth-anonymous=1 auth-cookie-enabled=0"]))
        wait_for(lambda: os.path.exists(folder + "/native"))

    def copy_game(self, *damaged):
        """Copies it to a folder of its own. These resources, given by their files, then hold nothing but zeros."""
        program = GAME.read_bytes()
        for name in damaged:
            content = (SOURCES / "resources" / name).read_bytes()
            self.assertEqual(program.count(content), 1)
            program = program.replace(content, bytes(len(content)))
        folder = tempfile.TemporaryDirectory(prefix="\u0161e \u4e94 ")
        file = pathlib.Path(self.enterContext(folder), GAME.name)
        file.write_bytes(program)
        return file

    def test_games_are_won_by_either_side_at_every_size(self):
        game = Game(self)
        for size in 10, 20, 30, 15:
            game.choose_size(size)
            game.await_opening()
            for choose, winner in (min, "B"), (max, "R"):
                while game.play_to_the_end(choose) != winner:
                    game.start()
                game.start()

    def test_the_keyboard_plays_a_game(self):
        game = Game(self)
        home = ["Left", "Up"] * 10
        game.set_stone = lambda cell: type_keys(*home, *["Right"] * cell[0], *["Down"] * cell[1], "space")
        # "Start" has the keyboard while it is shown. The list comes before it, the board after it.
        type_keys("Shift_L+Tab", "Up")
        game.size = 10
        game.await_opening()
        type_keys("Tab")
        game.play_to_the_end(max)
        type_keys("Return")
        game.await_opening()

    def test_the_form_fits_any_window(self):
        game = Game(self)
        game.start()
        position = game.position()
        for size in (1000, 678), (700, 740), (623, 529), (), (1190, 1003):
            game.resize(*size)
            wait_for(game.grid_is_sharp)
            wait_for(lambda: game.position() == position)
            for cell in empty_cells(position)[::31]:
                game.point_at(cell)
            position = game.play(cell)

    def test_sounds_are_heard_unless_switched_off(self):
        game = Game(self)
        file = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()), "samples")
        self.addCleanup(end, subprocess.Popen(
            ["parec", "--device=@DEFAULT_MONITOR@", "--raw", "--format=u8", "--channels=1", "--rate=8000",
             "--latency-msec=20", file]))
        wait_for(lambda: file.exists() and file.stat().st_size > 0)

        def await_sounds(letters):
            """A letter for each sound since the beginning: "t" a tap (46 ms), "e" an error sound (240 ms)."""
            sounds = re.compile(rb"[^\x7f-\x81].*?(?=[\x7f-\x81]{1600})", re.DOTALL)
            half_a_second_more = file.stat().st_size + 4000
            wait_for(lambda: file.stat().st_size > half_a_second_more and letters == "".join(
                "t" if len(samples) < 1120 else "e" for samples in sounds.findall(file.read_bytes())))

        game.start()
        game.play((3, 3))
        await_sounds("t")
        click()
        await_sounds("te")
        game.click_on(SOUND)
        game.play((0, 14))
        click()
        game.click_on(SOUND)
        # The computer begins this game, and is not heard.
        game.choose_size(10)
        game.await_opening()
        await_sounds("te")
        game.play((0, 9))
        await_sounds("tet")

    def test_two_copies_play_anywhere_and_without_what_they_need_not_have(self):
        program = self.copy_game("configuration.txt", "tap.wav", "error.wav")
        program.parent.chmod(0o500)
        os.chdir(program.parent)
        one = Game(self, program)
        # Wine makes TEMP and TMP anew for a program that no other Windows program has started.
        other = Game(self, "cmd", "/c", f"set TEMP=& set TMP=& {GAME.name}")
        for game, left in (one, 20), (other, 1000):
            game.window.configure(x=left, y=50)
            wait_for(lambda: abs(game.client_area()[0] - left) < 20)
            game.start()
        position = other.play((7, 7))
        click()
        one.play((9, 9))
        self.assertEqual((one.stones(), other.position()), ("br", position))
        self.addCleanup(release, 1)
        for game in one, other:
            # It also closes while the mouse is dragged.
            game.point_at((0, 0))
            press(1)
            game.point_at((2, 2))
            ask_manager(game.window, "_NET_CLOSE_WINDOW")
            self.assertEqual(game.process.wait(LIMIT), 0)
            release(1)
        self.assertEqual(list(program.parent.iterdir()), [program])

    def test_a_fatal_damage_is_told_once(self):
        for name in "pattern_table.dat", "background.jpg", "background_small.jpg", "picture2.gif", "picture3.gif":
            with self.subTest(name):
                game = Game(self, self.copy_game(name), board=False)
                # The game's own window may have come before.
                message = wait_for(lambda: [window for window in all_windows() if window.get_geometry().height < 300])
                ask_manager(message[0], "_NET_CLOSE_WINDOW")
                self.assertEqual(game.process.wait(LIMIT), 1)

    def test_random_use(self):
        game, choice, memory = Game(self), random.Random(SEED), []

        def roam(beyond):
            left, top, width, height = game.client_area()
            move(left + choice.randrange(-beyond, width + beyond), top + choice.randrange(-beyond, height + beyond))

        def drag():
            button = choice.choice([1, 1, 1, 1, 2, 3])
            press(button)
            roam(200)
            release(button)

        keys = "Left Up Right Down space Return Tab Shift_L+Tab Escape End F4 Next 1".split()
        uses = [click] * 14 + [drag] * 3 + [lambda: type_keys(choice.choice(keys))] * 2
        uses += [lambda: game.click_on(START)] * 2
        uses += [game.resize, lambda: game.resize(choice.randrange(640, 1300), choice.randrange(560, 900))]
        for done in range(1, INPUTS + 1):
            roam(0)
            choice.choice(uses)()
            if done % (INPUTS // 10) == 0:
                # It is laid out anew after all inputs, if it still lives.
                game.resize(900, 759)
                game.resize(1000, 843)
                status = pathlib.Path(f"/proc/{game.process.pid}/status").read_text()
                memory.append(int(re.search(r"RssAnon:\s+(\d+)", status)[1]))
                print(f"seed {SEED}, after {done} inputs: {memory[-1]} kB")
        # One that grows once and stays so is none that goes on growing.
        growth = [after - before for before, after in zip(memory, memory[1:])]
        self.assertLess(statistics.median(growth), 50)


if __name__ == "__main__":
    unittest.main()
