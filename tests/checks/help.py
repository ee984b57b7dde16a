#!/usr/bin/env python3
"""The manual tells of all that there is: help.py ROOT | help.py --self-test

share/help_kestrova.txt is held against the sources. It is Windows-1252 with a line feed at each
line's end. A bracket is closed on its line; a topic stands first as a heading, at its line's
beginning, and a main topic only there, so that the index leads to it. It has each tag of HelpTag
once, and no other. Each dialog of the windows has a row of help tags. The words of the terminal
stand there as `kestrovactl WORD VERB`, what can be set by its name, and what the menus and buttons
of commands say as they say it, without brackets.
"""

import pathlib
import re
import sys
import tempfile

MANUAL = "share/help_kestrova.txt"
# Windows that nobody has a question in: a picture, and what shows how far work has come.
WITHOUT_TAG = {"Dialog_Splash", "Dialog_Progress", "Dialog_Wait", "Dialog_Zip", "Dialog_ConvertiMp3"}
PHRASE = re.compile(r"\[([^\[\]{}]*)\]|\{([^\[\]{}]*)\}")
TAG = re.compile(r"#(\d{1,4})#")
TEXT = re.compile(r'^inline constexpr Message (\w+)\{"((?:\\.|[^"\\])*)"', re.M)


def plain(text):
    """A caption as the manual can say it."""
    text = text.replace("\\\\", "\\")
    return " ".join(re.sub(r"[\[\]{}]", "", text).split()).lower()


def text_faults(manual):
    first = {}
    for number, line in enumerate(manual.split("\n"), 1):
        where = f"{MANUAL}:{number}"
        if bad := re.search(r"[\x00-\x1f\x7f]", line):
            yield f"{where}: byte {ord(bad.group())}"
        if re.search(r"[\[\]{}]", PHRASE.sub("", line)):
            yield f"{where}: a bracket is not closed on its line, or stands inside another"
        for phrase in PHRASE.finditer(line):
            text = phrase.group().lower()
            if text not in first and phrase.start() > 0:
                yield f"{where}: {phrase.group()} stands here before its heading"
            elif text in first and (text[0] == "[" or phrase.start() == 0):
                yield f"{where}: {phrase.group()} is a heading in line {first[text]} already"
            first.setdefault(text, number)


def tag_faults(manual, tags, dialogs, placed):
    found = [int(tag) for tag in TAG.findall(manual)]
    for tag in sorted(set(tags) - set(found)):
        yield f"{MANUAL}: no #{tag}#, which {tags[tag]} asks for"
    for tag in sorted(set(found)):
        if tag not in tags:
            yield f"{MANUAL}: #{tag}#, which nobody asks for"
        elif found.count(tag) > 1:
            yield f"{MANUAL}: #{tag}# stands there {found.count(tag)} times"
    for dialog in sorted(dialogs - placed - WITHOUT_TAG):
        yield f"src/faces/app/help_tags.cpp: no row for {dialog}"


def command_faults(manual, words, captions, settings):
    said = plain(manual)
    for word in sorted(words):
        if not re.search(rf"kestrovactl {word}\b", manual):
            yield f"{MANUAL}: no word about kestrovactl {word}"
    for caption in sorted(captions):
        if plain(caption) not in said:
            yield f"{MANUAL}: no word about the command '{plain(caption)}'"
    for name in sorted(settings):
        if not re.search(rf"(?<![\w-]){name}(?![\w-])", manual):
            yield f"{MANUAL}: no word about the setting {name}"


def commands_of(source):
    """Words of the terminal, and ids of captions of rows that work."""
    words, captions = set(), set()
    for row in re.split(r"\n        (?=\{\.(?:window|terminal)\b)", source):
        word = re.search(r'\.word = "(\w[\w-]*)"', row)
        verb = re.search(r'\.verb = "(\w[\w-]*)"', row)
        if word:
            words.add(f"{word.group(1)} {verb.group(1)}" if verb else word.group(1))
        if ".available = false" not in row:
            captions.update(re.findall(r"\.caption = Msg::(\w+)", row))
            captions.update(re.findall(r"\(\"mnu_\w+\",\s*Msg::(\w+)", row))
    return words, captions


def faults(root):
    read = lambda path: (root / path).read_text(encoding="utf-8")
    try:
        manual = (root / MANUAL).read_bytes().decode("cp1252")
    except UnicodeDecodeError as failure:
        return [f"{MANUAL}: {failure}"]
    tags = {int(number): name for name, number in
            re.findall(r"^    (\w+) = (\d+),$", read("src/faces/app/help_tags.h"), re.M)}
    tags.pop(0, None)
    placed = set(re.findall(r'\{"(\w+)", HelpTag::', read("src/faces/app/help_tags.cpp")))
    dialogs = set()
    for file in (root / "src/faces/ui").rglob("*.cpp"):
        dialogs.update(re.findall(r'setObjectName\([^"]*"(Dialog_\w+)"',
                                  file.read_text(encoding="utf-8")))
    texts = {}
    for file in (root / "src/ground/words").glob("*.h"):
        texts.update(TEXT.findall(file.read_text(encoding="utf-8")))
    words, captions = set(), set()
    for file in (root / "src/faces/app").glob("*_commands.cpp"):
        some_words, some_captions = commands_of(file.read_text(encoding="utf-8"))
        words |= some_words
        captions |= {texts.get(name, name) for name in some_captions}
    settings = {one or other for one, other in re.findall(
        r'>\("([a-z][a-z0-9-]+)"\)|^    \{"([a-z][a-z0-9-]+)", Msg::Takes',
        read("src/faces/app/set_commands.cpp"), re.M)}
    return [*text_faults(manual), *tag_faults(manual, tags, dialogs, placed),
            *command_faults(manual, words, captions, settings)]


def self_test():
    for text in ("[Open\n", "a ]\n", "[a {b}]\n", "see {Later}\n{Later}\n", "[A]\nsee [A]\n",
                 "{A}\n{a}\n", "a\rb\n", "a\tb\n"):
        assert list(text_faults(text)), text
    assert not list(text_faults("[A] #1#\n{B}\nsee {b} (c)\n"))
    tags = {1: "One", 2: "Two"}
    found = "\n".join(tag_faults("#1# #1# #3#", tags, {"Dialog_A", "Dialog_Wait"}, set()))
    for word in ("no #2#, which Two", "#3#, which nobody", "#1# stands there 2", "for Dialog_A"):
        assert word in found, word
    assert "Dialog_Wait" not in found
    assert not list(tag_faults("#1# #2#", tags, {"Dialog_A"}, {"Dialog_A"}))
    words, captions = commands_of(
        'x\n        {.window = {.caption = Msg::Play},\n         .terminal = {.word = "play"}},'
        '\n        {.window = SavesItem("mnu_A", Msg::Free),\n         .terminal = {.word = "saves",'
        ' .verb = "archive"}},\n        {.window = {.caption = Msg::Later, .available = false}},')
    assert words == {"play", "saves archive"} and captions == {"Play", "Free"}, (words, captions)
    manual = "kestrovactl play puts a level in; Free the\nslots (F9 key) does; so does set game.\n"
    assert not list(command_faults(manual, {"play"}, {"Free the slots  ([F9] key) "}, {"game"}))
    assert len(list(command_faults(manual, {"saves", "pla"}, {"Freed"}, {"gam", "set-game"}))) == 5
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        (root / "share").mkdir()
        (root / MANUAL).write_bytes(b"\x81")
        assert "cp1252" in faults(root)[0] or "charmap" in faults(root)[0]


if sys.argv[1] == "--self-test":
    self_test()
else:
    all_faults = faults(pathlib.Path(sys.argv[1]))
    print("\n".join(all_faults))
    sys.exit(1 if all_faults else 0)
