"""Arguments that mxtool config refuses: values that do not fit, and names that mean two parameters."""

from __future__ import annotations

import assignments
from assignments import identifier
from case import Case, expect
from configuring import with_values, without_shared_bits
from description import Parameter, described
from values import holds, options


def refusing(case: Case) -> None:
    """Values next to the accepted ones are refused, each named; --force writes those that fit."""
    words, forced, forced_values, named = [], [], [], []
    for one in without_shared_bits(case.module.parameters):
        raw, text = refused_value(case, one)
        if text is None:
            continue
        named.append(identifier(case.module, one))
        words += ["--set", f"{named[-1]}={text}"]
        if case.module.is_usable(one) and holds(one, raw):
            forced += ["--set", f"{named[-1]}={text}"]
            forced_values.append((one, raw))
    if not words:
        return
    answer = case.config(*words, "--format", "binary")
    unnamed = [name for name in named if f"({name}," not in answer.errors]
    expect(answer.code == 2 and answer.output == b"" and not unnamed, f"refusal expected, not named: {unnamed}", answer,
           *map(described, case.module.parameters))
    if forced:
        answer = case.config(*forced, "--force", "--format", "binary")
        image = with_values(case.module, forced_values)
        expect(answer.code == 0 and answer.output == image, f"with --force {image.hex(' ')} expected", answer,
               answer.output.hex(" "), *map(described, case.module.parameters))


def refused_value(case: Case, one: Parameter) -> tuple[int, str | None]:
    if not case.module.lies_in_image(one):
        return 0, "#0" if one.has_options else "0"
    if not one.fits_its_byte:
        return 0, None
    values = assignments.refused_values(case.module, one)
    if not values:
        return 0, None
    raw = case.choose.choice(values)
    if one.has_options:
        return raw, f"#{raw}"
    return raw, assignments.physical_text(case.module, one, raw, case.choose) if one.converted else str(raw)


def choosing_between_names(case: Case) -> None:
    """NAME=VALUE with "=" in names: sets the parameter that accepts the rest; refused if two do."""
    words = [f"{one.name}={text}" for one in case.usable()
             for raw in assignments.good_values(case.module, one, case.choose)
             for text in sorted({str(raw)} | {text for number, text in options(case.module, one) if number == raw})]
    open_words = [some for some in dict.fromkeys(words) if len(assignments.readings(case.module, some)) > 1
                  and assignments.means_two(case.module, some) is not None]
    for some in case.choose.sample(open_words, min(len(open_words), 3)):
        try_name(case, some)


def try_name(case: Case, words: str) -> None:
    readings = assignments.readings(case.module, words)
    answer = case.config("--set", words, "--format", "binary")
    if assignments.means_two(case.module, words):
        expect(answer.code == 2 and answer.output == b"", f"two readings, refusal expected: {readings}", answer)
        return
    one, text = next(reading for reading in readings if assignments.is_accepted(case.module, *reading))
    by_id = case.config("--set", f"{identifier(case.module, one)}={text}", "--format", "binary")
    expect(answer.code == 0 and answer.output == by_id.output, "another parameter was set", answer, described(one))
