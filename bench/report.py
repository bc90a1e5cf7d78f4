"""Prints the medians of benchmark reports and checks the promised ratios."""

import json
import sys

UNITS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}

# What is compared, with what, and the largest promised ratio (None: printed only).
RATIOS = [
    ("translation: parse/{}", "translation: floorOfTree/{}", {"small": 1.3, "medium": 1.2, "large": 1.2}),
    ("translation: parseWithTraceLines/{}", "translation: parse/{}", {"small": None, "medium": None, "large": None}),
    ("loading: loadFile/{}", "loading: oneRead/{}", {"small": 1.2, "medium": 1.2, "large": 1.2}),
    ("module: parse/{}", "module: floorOfTree/{}", {"small": None, "medium": None, "large": None}),
    ("module: fromBytes/{}", "module: parse/{}", {"small": 1.3, "medium": 1.3, "large": 1.3}),
    ("module: fromFileWithChannelMap/{}", "module: parse/{}", {"small": 1.2, "large": 1.2}),
    ("module: compose/1000", "module: parse/large", {"": 2.0}),
    ("module: decode/{}", "module: parse/large", {"raw": 1.5, "modbus": 1.5}),
    ("station: planOfRow/{}", "station: translationsOfRow/{}", {"64": 1.3, "250": None, "1000": None}),
    ("station: planOfExamples", "station: translationsOfExamples", {"": 1.3}),
    ("process: mxtoolShow/real_time", "process: loadOnly/real_time", {"": 3}),
]


def medians(path):
    with open(path, encoding="utf-8") as report:
        benchmarks = json.load(report)["benchmarks"]
    name = path.rsplit("/", 1)[-1].removesuffix(".json")
    return {
        f"{name}: {entry['run_name']}": (
            entry["real_time" if "real_time" in entry["run_name"] else "cpu_time"] * UNITS[entry["time_unit"]],
            entry,
        )
        for entry in benchmarks
        if entry.get("aggregate_name") == "median"
    }


def natural(name):
    """A sort key: numbers in a name and sizes are ordered by value."""
    sizes = {"small": "1", "medium": "2", "large": "3"}
    return [part.zfill(9) for part in "/".join(sizes.get(word, word) for word in name.split("/")).split("/")]


def shown(nanoseconds):
    return f"{nanoseconds / 1000:,.2f}"


def ratio_lines(found):
    for over, under, limits in RATIOS:
        for size, limit in limits.items():
            first, second = over.format(size), under.format(size)
            if first in found and second in found:
                yield first, second, found[first][0] / found[second][0], limit
    yield from growth_lines(found)
    yield from populate_lines(found)
    yield from station_lines(found)


def growth_lines(found):
    start, end = "growth: fileSize/4096", "growth: fileSize/65535"
    if start in found and end in found:
        per_byte = (found[end][0] / 65535) / (found[start][0] / 4096)
        yield "growth: time per byte at 64 KiB", "at 4 KiB", per_byte, 1.5
    every, parse = "configuration: rawConfiguration/1000", "configuration: parse"
    if every in found and parse in found:
        allowed = 1.5 * found[parse][0] + 3000 * 1000
        yield every, "1.5 parse + 3 us a parameter", found[every][0] / allowed, 1.0


def populate_lines(found):
    for count in ("1000", "10000"):
        populate, loop, translation = (f"populate: {name}/{count}/real_time" for name in (
            "populateInOneTransaction", "bareLoop", "translationAlone"))
        if populate in found and loop in found and translation in found:
            together = found[loop][0] + found[translation][0]
            yield populate, "bareLoop + translationAlone", found[populate][0] / together, 1.7


def station_lines(found):
    plan, translations, compose = (f"station: {name}/64" for name in (
        "planWithValues", "translationsOfRow", "composeCalls"))
    if plan in found and translations in found and compose in found:
        allowed = 1.3 * found[translations][0] + found[compose][0]
        yield plan, "1.3 translations + compose", found[plan][0] / allowed, 1.0
    start, end = "station: planOfRow/64", "station: planOfRow/1000"
    if start in found and end in found:
        yield "station: time per module of 1,000", "of 64", found[end][0] / 1000 / (found[start][0] / 64), None
    show, version = (f"process: mxtool{name}/real_time" for name in ("StationShow", "Version"))
    if show in found and version in found:
        yield show, "mxtoolVersion + 30 ms", found[show][0] / (found[version][0] + 30e6), 1.0


def main():
    found = {}
    for path in sys.argv[1:]:
        found.update(medians(path))
    width = max(len(name) for name in found) + 2
    print(f"{'benchmark':{width}}{'median us':>14}")
    for name, (time, entry) in sorted(found.items(), key=lambda item: natural(item[0])):
        extra = "".join(f"  {key} {entry[key]:,.4g}" for key in entry if key.startswith(("peak_", "tree_")))
        print(f"{name:{width}}{shown(time):>14}{extra}")
    print()
    print(f"{'ratio':{2 * width}}{'found':>8}{'at most':>9}")
    for first, second, ratio, limit in ratio_lines(found):
        verdict = "" if limit is None else f"{limit:9}" + ("" if ratio <= limit else "  missed")
        print(f"{first + ' / ' + second:{2 * width}}{ratio:8.2f}{verdict}")


main()
