#!/usr/bin/env python3
"""Makes the seed corpus of every fuzz target from the sample assays in examples/.

Run by hand when the samples change: fuzz/make_seeds.py build/titron-cli
The saved reports come from titron-cli, so that the comparison's reader and the loader
start from real analysis files of every form. Each seed begins with the target's choice
byte(s); see the target's source for what they choose.
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

root = pathlib.Path(__file__).resolve().parent.parent
corpus = root / "fuzz" / "corpus"
cli = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else root / "build" / "titron-cli")
examples = sorted((root / "examples").iterdir())


def write(target, name, data):
    directory = corpus / target
    directory.mkdir(parents=True, exist_ok=True)
    (directory / name).write_bytes(data)


def saved_reports():
    """Each sample analysed and saved in report form by the command line."""
    reports = {}
    with tempfile.TemporaryDirectory() as scratch:
        for example in examples:
            out = pathlib.Path(scratch) / (example.stem + ".tna")
            subprocess.run([str(cli), "analyze", "--save", str(out), str(example)],
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            if out.exists():
                reports[example.stem] = out.read_bytes()
    return reports


def table_rows(data):
    """The sample's rows as Dose, Responses, Tested, Comments texts."""
    rows = []
    for line in re.split(rb"\r\n|\n|\r", data):
        cells = [c for c in re.split(rb"\t+|,", line)]
        numbers = [c for c in cells if re.fullmatch(rb"[0-9.Ee+-]+", c.strip())]
        if len(numbers) >= 3:
            if len(cells) >= 5 or (len(cells) == 4 and re.fullmatch(rb"[0-9.]+", cells[0].strip())
                                   and len(numbers) == 4):
                cells = cells[1:]
            rows.append(cells[:4])
    return rows


def main():
    shutil.rmtree(corpus, ignore_errors=True)
    reports = saved_reports()
    files = {e.stem: e.read_bytes() for e in examples}
    files.update({stem + "-saved": data for stem, data in reports.items()})

    # Loading: empty grid; an earlier table then Yes (append); then No (replace); and an
    # empty grid with an analysis before the save.
    for stem, data in files.items():
        for mode in (0x00, 0x01, 0x04, 0x12):
            write("load_document", f"{stem}-{mode:02x}", bytes([mode]) + data)

    # The comparison's reader: the saved reports, each as the comparison row and not.
    for stem, data in files.items():
        for mode in (0, 3):
            write("saved_analysis", f"{stem}-{mode}", bytes([mode]) + data)

    # The settings file: the sample of the README, one with a quoted comma, one cut short.
    write("settings", "readme", b'0, 600, 800, 7200, 9600\r\n"Row", "Dose", "Responses", '
                                b'"Tested", "Comments"\r\n500, 0, 0, 0, 0\r\n2205\r\n1, 1\r\n')
    write("settings", "quoted", b'2,0,0,6000,8000\n"No.","Dose, cells","Positive",Tested,'
                                b'Notes\n400,1500,1500,1500,0\n3000\n0,0\n')
    write("settings", "short", b"0, 600, 800\r\n")

    # Numbers: every cell text of the samples and every figure of the saved reports.
    texts = set()
    for data in files.values():
        for row in table_rows(data):
            texts.update(c.strip() for c in row[:3])
        texts.update(re.findall(rb"-?[0-9][0-9,]*\.?[0-9]*(?:E[+-]?[0-9]+)?", data))
    for i, text in enumerate(sorted(texts)):
        write("numbers", f"text-{i:03d}", b"\x00" + text)

    # Text routines: the samples with the replacements the program makes (two Tabs by one,
    # one Tab by two, comma by blank) and the table layout on doubled Tabs.
    for stem, data in files.items():
        write("text_routines", f"{stem}-close-runs", b"\x0a\t\t\t" + data)
        write("text_routines", f"{stem}-double", b"\x10\t\t\t" + data)
        write("text_routines", f"{stem}-commas", b"\x08, " + data)
        write("text_routines", f"{stem}-layout", b"\x03" + data)

    # Analysis: each sample's rows set, typed, pasted and edited into the grid, with a name.
    for stem, data in files.items():
        rows = table_rows(data)
        if not rows:
            continue
        table = b"\n".join(b"\t".join(c.strip() for c in row) for row in rows)
        for mode in range(4):
            write("analysis", f"{stem}-{mode}", bytes([mode]) + table)
        write("analysis", f"{stem}-named", bytes([0x04 | 0x08]) + stem.encode() + b"\n" + table)


main()
