"""The functions that the package declares, against the headers for C."""

from __future__ import annotations

import ctypes
import importlib
import re
import unittest
from typing import Any, NamedTuple

from examples import PROJECT

LIBRARIES = ("mxmodule", "mxstation", "mxonline")

#: The functions of which the package has no use, and why.
UNUSED = {
    "mxmodule_catalogue_search": "mxmodule_catalogue_search_page gives the same",
    "mxmodule_error_text": "mxmodule_error_findings has it",
    "mxmodule_error_place": "mxmodule_error_findings has it",
    "mxmodule_error_hint": "mxmodule_error_findings has it",
    "mxstation_module_count": "mxstation_plan_json has it",
    "mxstation_comparison_is_same": "mxstation_comparison_json has it",
    "mxstation_comparison_same_values": "mxstation_comparison_json has it",
    "mxonline_difference_is_same": "mxonline_difference_json has it",
    "mxonline_report_is_done": "mxonline_report_json has it",
}

TYPES: dict[str, Any] = {
    "void": None,
    "int": ctypes.c_int,
    "char": ctypes.c_char,
    "size_t": ctypes.c_size_t,
    "uint32_t": ctypes.c_uint32,
    "const char*": ctypes.c_char_p,
    "const void*": ctypes.c_char_p,  # bytes of Python
    "const char* const*": ctypes.POINTER(ctypes.c_char_p),
    "int*": ctypes.POINTER(ctypes.c_int),
    "size_t*": ctypes.POINTER(ctypes.c_size_t),
    # Numbers that are copied from there.
    "const unsigned char*": ctypes.c_void_p,
    "const uint16_t*": ctypes.c_void_p,
    "const uint32_t*": ctypes.c_void_p,
}


#: Results of another type than the others of their kind: bytes may contain NUL.
RESULTS = {"mxmodule_bytes_data": ctypes.c_void_p}


class Header(NamedTuple):
    functions: dict[str, tuple[str, list[str]]]
    enumerations: dict[str, list[int]]
    structures: dict[str, list[tuple[str, str]]]


def header_of(library: str) -> Header:
    """Returns what the headers of a library for C declare."""
    folder = PROJECT / library / "include" / library / "c"
    text = "".join(path.read_text("utf-8") for path in sorted(folder.glob("[a-z]*.h")))
    text = re.sub(r"//[^\n]*", "", text)
    functions = {}
    for result, name, listed in re.findall(r"_API\s([^;{}()]+?)(\w+)\s*\(([^;{}]*)\);", text):
        arguments = [type_of(one) for one in listed.split(",") if one.strip() != "void"]
        functions[name] = (" ".join(result.split()), arguments)
    enumerations = {
        name: [int(one) for one in re.findall(r"=\s*(\d+)", values)]
        for name, values in re.findall(r"enum\s+(\w+)[^{;]*\{([^}]*)\}", text)
    }
    structures = {
        name: [member_of(one) for one in members.split(";") if one.strip()]
        for name, members in re.findall(r"struct\s+(\w+)\s*\{([^}]*)\}", text)
    }
    return Header(functions, enumerations, structures)


def type_of(argument: str) -> str:
    """Returns the type of an argument or member, which ends in its name."""
    return " ".join(re.sub(r"\w+\s*$", "", argument).split())


def member_of(declaration: str) -> tuple[str, str]:
    """Returns name and type of a member; the type of a function is as declared, without names."""
    function = re.fullmatch(r"\s*(\w+)\s*\(\*(\w+)\)\((.*)\)\s*", declaration, re.S)
    if function is None:
        return re.findall(r"\w+", declaration)[-1], type_of(declaration)
    result, name, arguments = function.groups()
    return name, f"{result}({', '.join(type_of(one) for one in arguments.split(','))})"


HEADERS = {library: header_of(library) for library in LIBRARIES}
HANDLE = re.compile(r"(const )?mx\w+\*")


def declared() -> dict[str, tuple[Any, list[Any]]]:
    """Returns what the package declares, with the error of functions that fail."""
    found: dict[str, tuple[Any, list[Any]]] = {}
    for library in LIBRARIES:
        module = importlib.import_module(f"mxmodule._{library}")
        for name, (result, arguments) in module._FAILING.items():
            found[name] = (result, [*arguments, ctypes.c_void_p])
        for name, (result, arguments) in module._PLAIN.items():
            found[name] = (result, list(arguments))
    errors = importlib.import_module("mxmodule._library")._ERROR_FUNCTIONS
    found.update({name: (result, list(rest)) for name, (result, rest) in errors.items()})
    return found


def structure_called(name: str) -> Any:
    """Returns the structure of the package for the one of C with this name."""
    for library in LIBRARIES:
        module = importlib.import_module(f"mxmodule._{library}")
        for one in vars(module).values():
            if isinstance(one, type) and (one.__doc__ or "").startswith(f"`{name}`"):
                return one
    raise KeyError(name)


def expected(type_name: str) -> Any:
    """Returns the type of ctypes for a type of the headers."""
    if type_name in TYPES:
        return TYPES[type_name]
    plain = type_name.replace("const ", "").rstrip("*").strip()
    for header in HEADERS.values():
        if plain in header.enumerations:
            return ctypes.c_int
        if plain in header.structures:
            return ctypes.POINTER(structure_called(plain))
    if type_name == "mxmodule_error**" or HANDLE.fullmatch(type_name):
        return ctypes.c_void_p
    if re.fullmatch(r"mx\w+\*\*|const mx\w+\* const\*", type_name):
        return ctypes.POINTER(ctypes.c_void_p)
    raise KeyError(type_name)


class Signatures(unittest.TestCase):
    def test_each_function_is_declared_as_in_its_header(self) -> None:
        found = declared()
        checked = 0
        for header in HEADERS.values():
            for name, (result, arguments) in header.functions.items():
                if name not in UNUSED:
                    kind = RESULTS.get(name, expected(result))
                    wanted = (kind, [expected(one) for one in arguments])
                    self.assertEqual(found.get(name), wanted, name)
                    checked += 1
        self.assertGreater(checked, 100)

    def test_none_is_declared_without_a_header_or_left_out_unnamed(self) -> None:
        known = {name for header in HEADERS.values() for name in header.functions}
        self.assertEqual(set(declared()), known - set(UNUSED))
        self.assertLessEqual(set(UNUSED), known)

    def test_functions_that_fail_take_an_error_last(self) -> None:
        for library in LIBRARIES:
            module = importlib.import_module(f"mxmodule._{library}")
            functions = HEADERS[library].functions
            for name in module._FAILING:
                self.assertEqual(functions[name][1][-1], "mxmodule_error**", name)
            for name in module._PLAIN:
                self.assertNotIn("mxmodule_error**", functions[name][1], name)

    def test_structures_have_the_members_of_the_headers(self) -> None:
        types = {
            "void*": ctypes.c_void_p,
            "const char*": ctypes.c_char_p,
            "const char* const*": ctypes.POINTER(ctypes.c_char_p),
            "size_t": ctypes.c_size_t,
            "int(void*, const char*)": (ctypes.c_int, [ctypes.c_void_p, ctypes.c_char_p]),
            "int(void*, size_t, size_t)": (
                ctypes.c_int,
                [ctypes.c_void_p, ctypes.c_size_t, ctypes.c_size_t],
            ),
        }
        structures = {k: v for one in HEADERS.values() for k, v in one.structures.items()}
        self.assertGreater(len(structures), 2)
        for name, members in structures.items():
            found = []
            for member, kind in structure_called(name)._fields_:
                if hasattr(kind, "_restype_"):
                    kind = (kind._restype_, list(kind._argtypes_))
                found.append((member, kind))
            self.assertEqual(found, [(member, types[kind]) for member, kind in members])


class Numbers(unittest.TestCase):
    def test_enumerations_are_counted_from_zero(self) -> None:
        # The package uses positions in a list.
        for header in HEADERS.values():
            for name, values in header.enumerations.items():
                first = 1 if name == "mxmodule_code" else 0
                self.assertEqual(values, list(range(first, first + len(values))), name)

    def test_lists_have_as_many_choices(self) -> None:
        counts = {k: len(v) for one in HEADERS.values() for k, v in one.enumerations.items()}
        arguments = importlib.import_module("mxmodule._arguments")
        self.assertEqual(len(arguments.FIELDBUSES), counts["mxmodule_fieldbus"])
        columns = importlib.import_module("mxmodule._channels_dataframe")
        self.assertEqual(columns._MASK + 1, counts["mxmodule_number_column"])
        self.assertEqual(columns._LABEL + 1, counts["mxmodule_text_column"])


if __name__ == "__main__":
    unittest.main()
