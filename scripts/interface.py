#!/usr/bin/env python3
"""Everything a caller sees of the library, generated from its export table.

    interface.py TABLE OUTDIR          writes into OUTDIR:
        CorvaneSupportKit0100.def   the exports, each at a fixed ordinal
        ExportList.txt              the names, one a line
        CorvaneSupportKit0100.idl   the type library's source
        CorvaneSupportKit0100.bas   Declare statements and records for VB
        reference/                  one page per family and an index
        VbDeclares.h                the tests' typed declarations and the
                                    shape of every export
    interface.py --check TABLE REPO    fails if REPO's copies of the .bas and
                                       the reference differ from the table's

TABLE is src/frame/ExportTable.txt. Its lines (besides '#' comments):
    =Family|Title|What the family is for
    name|Family|result|arguments|description|status|failure
Ordinals follow the table's order, so new exports go at the end of the file:
an ordinal, once shipped, never changes (the type library calls by it).
"""
import filecmp
import os
import sys
import tempfile
import uuid

DLL = "CorvaneSupportKit0100.dll"
BASE = "CorvaneSupportKit0100"
LIBRARY_UUID = uuid.UUID("5c0f7a1e-3d2b-4e8a-9c61-0a7d2f4b8e13")

# Records that cross the boundary, with their fields as (IDL type, name).
RECORDS = {
    "SYSTEMTIME": [("short", n) for n in ("wYear", "wMonth", "wDayOfWeek", "wDay", "wHour", "wMinute", "wSecond",
                                          "wMilliseconds")],
    "RECT": [("long", n) for n in ("Left", "Top", "Right", "Bottom")],
    "NewRect": [("long", n) for n in ("Left", "Top", "Width", "Height")],
    "TMFI": [("long", n) for n in ("hThunderMain", "hThunderRTMain", "hThunderRT5Main", "hThunderRT6Main")],
    "OSVERSIONINFOEX": [("long", "dwOSVersionInfoSize"), ("long", "dwMajorVersion"), ("long", "dwMinorVersion"),
                        ("long", "dwBuildNumber"), ("long", "dwPlatformId"), ("unsigned char[128]", "szCSDVersion"),
                        ("short", "wServicePackMajor"), ("short", "wServicePackMinor"), ("short", "wSuiteMask"),
                        ("unsigned char", "wProductType"), ("unsigned char", "wReserved")],
    "SYSTEM_INFO": [("short", "wProcessorArchitecture"), ("short", "wReserved"), ("long", "dwPageSize"),
                    ("long", "lpMinimumApplicationAddress"), ("long", "lpMaximumApplicationAddress"),
                    ("long", "dwActiveProcessorMask"), ("long", "dwNumberOfProcessors"), ("long", "dwProcessorType"),
                    ("long", "dwAllocationGranularity"), ("short", "wProcessorLevel"), ("short", "wProcessorRevision")],
    "DLLVERSIONINFO": [("long", n) for n in ("cbSize", "dwMajorVersion", "dwMinorVersion", "dwBuildNumber",
                                             "dwPlatformID")],
}

# Value types: IDL, Visual Basic, the stack bytes a by-value argument takes.
VALUES = {
    "BSTR": ("BSTR", "String", 4), "LONG": ("long", "Long", 4), "INTEGER": ("short", "Integer", 4),
    "BYTE": ("unsigned char", "Byte", 4), "BOOL": ("VARIANT_BOOL", "Boolean", 4), "SINGLE": ("float", "Single", 4),
    "DOUBLE": ("double", "Double", 8), "DATE": ("DATE", "Date", 8), "WSTR": ("LPWSTR", "Long", 4),
    "BOOL32": ("long", "Long", 4), "BYTES": ("SAFEARRAY(unsigned char)", "Byte", 4),
}
VB_RESERVED = {w.lower() for w in (
    "Any As Boolean Byte ByRef ByVal Call Case Const Currency Date Declare Dim Do Double Each Else End Enum Erase "
    "Error Event Exit False For Function Get GoTo If Implements In Integer Is Let Lib Like Long Loop Me Mod New "
    "Next Not Nothing Object On Optional Or ParamArray Private Property Public ReDim Rem Resume Return Select Set "
    "Single Static Step Stop String Sub Then To True Type TypeOf Until Variant Wend While With Xor").split()}
VB_FIELD = {"short": "Integer", "long": "Long", "unsigned char": "Byte", "unsigned char[128]": "String * 128"}


def stable_uuid(name):
    return uuid.uuid5(LIBRARY_UUID, name)


class Argument:
    def __init__(self, text, export):
        parts = text.split()
        if len(parts) != 3 or parts[0] not in ("in", "out", "inout"):
            sys.exit(f"{export}: cannot read the argument '{text}'")
        self.direction, self.type, self.name = parts
        if self.type not in VALUES and self.type not in RECORDS:
            sys.exit(f"{export}: unknown type {self.type}")
        if self.name.lower() in VB_RESERVED:
            sys.exit(f"{export}: {self.name} is a word Visual Basic keeps for itself")

    @property
    def record(self):
        return self.type in RECORDS

    def stack_bytes(self):
        return VALUES[self.type][2] if self.direction == "in" and not self.record else 4


class Export:
    def __init__(self, fields, ordinal):
        self.name, self.family, self.result, arguments, self.description = fields[:5]
        self.status, self.failure = (fields[5:7] + ["", ""])[:2]
        self.ordinal = ordinal
        if self.result not in ("status", "long", "none"):
            sys.exit(f"{self.name}: unknown result {self.result}")
        self.arguments = [Argument(a.strip(), self.name) for a in arguments.split(";") if a.strip()]

    @property
    def retval(self):
        """The answer that a type library caller gets as the function's value."""
        written = [a for a in self.arguments if a.direction != "in"]
        if self.result == "status" and len(written) == 1 and written[0] is self.arguments[-1] \
                and written[0].direction == "out" and written[0].type != "BYTES" and not written[0].record:
            return written[0]
        return None


def read_table(path):
    families, exports = {}, []
    with open(path, encoding="utf-8") as table:
        for number, line in enumerate(table, 1):
            line = line.rstrip("\n")
            if not line.strip() or line.startswith("#"):
                continue
            fields = [f.strip() for f in line.split("|")]
            if line.startswith("="):
                families[fields[0][1:]] = (fields[1], fields[2] if len(fields) > 2 else "")
            elif len(fields) in (5, 7):
                exports.append(Export(fields, len(exports) + 1))
            else:
                sys.exit(f"{path}:{number}: {len(fields)} fields")
    names = [e.name for e in exports]
    if len(set(names)) != len(names):
        sys.exit(f"{path}: a name stands twice")
    for export in exports:
        families.setdefault(export.family, (export.family, ""))
    return families, exports


def family_order(families, exports):
    order = []
    for export in exports:
        if export.family not in order:
            order.append(export.family)
    return order


def write_def(exports, path):
    with open(path, "w", newline="\n") as out:
        out.write(f"; Generated from src/frame/ExportTable.txt: do not edit.\nLIBRARY {BASE}\nEXPORTS\n")
        for e in exports:
            out.write(f"    {e.name} @{e.ordinal}\n")


def idl_parameter(argument, retval):
    idl = VALUES[argument.type][0] if not argument.record else argument.type
    pointer = argument.direction != "in" or argument.record or argument.type == "BYTES"
    attributes = {"in": "in", "out": "out", "inout": "in, out"}[argument.direction]
    if argument is retval:
        attributes += ", retval"
    return f"[{attributes}] {idl}{'*' if pointer else ''} {argument.name}"


def write_idl(families, exports, path):
    order = family_order(families, exports)
    with open(path, "w", newline="\n") as out:
        out.write("// Generated from src/frame/ExportTable.txt: do not edit.\n")
        # The automation types by the names the IDL compiler knows them by,
        # so that no system IDL files are needed.
        out.write("typedef long HRESULT;\ntypedef [public] unsigned short* BSTR;\ntypedef short VARIANT_BOOL;\n"
                  "typedef double DATE;\ntypedef [string] unsigned short* LPWSTR;\n\n")
        out.write(f'[uuid({LIBRARY_UUID}), version(1.0), helpstring("Corvane Support Kit 1.0")]\n')
        out.write("library CorvaneSupportKit\n{\n")
        for record, fields in RECORDS.items():
            out.write(f"    typedef [uuid({stable_uuid(record)})] struct {record} {{\n")
            for idl, name in fields:
                array = idl.endswith("]")
                base = idl[: idl.index("[")] if array else idl
                out.write(f"        {base} {name}{idl[idl.index('['):] if array else ''};\n")
            out.write(f"    }} {record};\n\n")
        for family in order:
            title = families[family][0]
            out.write(f'    [dllname("{DLL}"), uuid({stable_uuid(family)}), helpstring("{title}")]\n')
            out.write(f"    module {family}\n    {{\n")
            for e in (e for e in exports if e.family == family):
                result = {"status": "HRESULT", "long": "long", "none": "void"}[e.result]
                retval = e.retval
                parameters = ", ".join(idl_parameter(a, retval) for a in e.arguments) or "void"
                help = e.description.replace('"', "'")
                out.write(f'        [entry({e.ordinal}), helpstring("{help}")]\n')
                out.write(f"        {result} __stdcall {e.name}({parameters});\n")
            out.write("    };\n\n")
        out.write("};\n")


def vb_parameter(argument):
    vb = VALUES[argument.type][1] if not argument.record else argument.type
    if argument.type in ("BSTR", "WSTR"):
        return f"ByVal {argument.name} As Long"  # StrPtr(text), or VarPtr(variable) for an answer
    if argument.type == "BYTES":
        return f"{argument.name}() As Byte"
    if argument.record or argument.direction != "in":
        return f"{argument.name} As {vb}"
    return f"ByVal {argument.name} As {vb}"


def write_bas(families, exports, path):
    order = family_order(families, exports)
    lines = ['Attribute VB_Name = "CorvaneSupportKit0100"',
             "' Generated from src/frame/ExportTable.txt: do not edit.",
             "' The declarations of " + DLL + " for programs that do not reference its type",
             "' library. Text goes in as StrPtr(text); a String answer comes back through",
             "' VarPtr(variable); Longs, Booleans, Doubles and records are passed ByRef.",
             "Option Explicit", ""]
    for record, fields in RECORDS.items():
        lines.append(f"Public Type {record}")
        lines += [f"    {name} As {VB_FIELD[idl]}" for idl, name in fields]
        lines += ["End Type", ""]
    for family in order:
        lines.append(f"' {families[family][0]}")
        for e in (e for e in exports if e.family == family):
            kind = "Sub" if e.result == "none" else "Function"
            parameters = ", ".join(vb_parameter(a) for a in e.arguments)
            tail = "" if e.result == "none" else " As Long"
            lines.append(f'Public Declare {kind} {e.name} Lib "{DLL}" ({parameters}){tail}')
        lines.append("")
    with open(path, "w", newline="\r\n") as out:
        out.write("\n".join(lines))


def vb_call(e):
    """How a program that references the type library writes the call."""
    retval = e.retval
    arguments = ", ".join(a.name for a in e.arguments if a is not retval)
    if retval is not None:
        return f"{retval.name} = {e.name}({arguments})"
    if e.result == "long":
        return f"Result = {e.name}({arguments})"
    return f"{e.name} {arguments}".rstrip()


def declare_call(e):
    parts = []
    for a in e.arguments:
        if a.type in ("BSTR", "WSTR"):
            parts.append(f"StrPtr({a.name})" if a.direction == "in" else f"VarPtr({a.name})")
        else:
            parts.append(a.name)
    call = f"{e.name}({', '.join(parts)})"
    return f"Status = {call}" if e.result == "status" else f"Result = {call}" if e.result == "long" else \
        f"{e.name} {', '.join(parts)}".rstrip()


def describe(a):
    vb = "array of Byte" if a.type == "BYTES" else VALUES[a.type][1] if not a.record else a.type
    if a.type == "WSTR":
        vb = "String (a UTF-16 pointer)"
    way = {"in": "in", "out": "out", "inout": "in and out"}[a.direction]
    return f"`{a.name}` ({vb}, {way})"


def write_reference(families, exports, folder):
    os.makedirs(folder, exist_ok=True)
    order = family_order(families, exports)
    index = ["# Reference", "",
             f"Every export of `{DLL}`, by family. Each page gives the call with the type",
             "library referenced and with the `Declare` statements of `vb6/CorvaneSupportKit0100.bas`,",
             "what the export answers, its status values and what the answer holds when it fails.",
             "Generated from `src/frame/ExportTable.txt`.", "",
             "| Family | Exports | What for |", "|---|---|---|"]
    for family in order:
        members = [e for e in exports if e.family == family]
        title, about = families[family]
        index.append(f"| [{title}]({family}.md) | {len(members)} | {about} |")
        page = [f"# {title}", ""]
        if about:
            page += [about, ""]
        page += [f"Type library module `{family}`.", ""]
        for e in members:
            page += [f"## {e.name}", "", e.description, "", "```vb", "' with the type library", vb_call(e),
                     "' with the Declare statements", declare_call(e), "```", ""]
            if e.arguments:
                page += ["Arguments: " + "; ".join(describe(a) for a in e.arguments) + ".", ""]
            if e.status:
                page += [f"Status: {e.status}.".replace("..", "."), ""]
            if e.failure:
                page += [f"On failure: {e.failure}.".replace("..", "."), ""]
        with open(os.path.join(folder, f"{family}.md"), "w", newline="\n") as out:
            out.write("\n".join(page).rstrip("\n") + "\n")
    with open(os.path.join(folder, "README.md"), "w", newline="\n") as out:
        out.write("\n".join(index) + "\n")

# The tests' C++ types: by value, and pointed to for out, inout and records.
CPP_VALUES = {"BSTR": "BSTR", "LONG": "LONG", "INTEGER": "SHORT", "BYTE": "BYTE", "BOOL": "VARIANT_BOOL",
              "SINGLE": "float", "DOUBLE": "double", "DATE": "DATE", "WSTR": "LPCWSTR", "BOOL32": "BOOL",
              "BYTES": "SAFEARRAY*"}
CPP_RECORDS = {"OSVERSIONINFOEX": "OSVERSIONINFOEXA"}
CPP_RESULTS = {"status": "HRESULT", "long": "LONG", "none": "void"}
# One letter a type in an export's shape; a D or T by value takes two slots.
SHAPE_CODES = {"BSTR": "S", "LONG": "L", "INTEGER": "I", "BYTE": "B", "BOOL": "V", "SINGLE": "F", "DOUBLE": "D",
               "DATE": "T", "WSTR": "W", "BOOL32": "L", "BYTES": "A"}


def cpp_type(a):
    if a.record:
        return CPP_RECORDS.get(a.type, a.type) + "*"
    base = CPP_VALUES[a.type]
    return base + "*" if a.direction != "in" or a.type == "BYTES" else base


def checks_out_pointer(e):
    """Whether the export answers status 1, and nothing else, for a null last argument."""
    return "1 when the answer variable is missing" in e.status or "1 when the success flag variable is missing" in e.status


def write_declares(exports, path):
    with open(path, "w", newline="\n") as out:
        out.write("// Generated from src/frame/ExportTable.txt by scripts/interface.py: do not edit.\n"
                  "#pragma once\n\n#include \"Harness.h\"\n\n")
        for name in ("NewRect", "TMFI"):
            out.write(f"struct {name} {{ LONG {', '.join(f for _, f in RECORDS[name])}; }};\n")
        out.write("\nnamespace vb {\n")
        for e in exports:
            types = ", ".join([CPP_RESULTS[e.result]] + [cpp_type(a) for a in e.arguments])
            out.write(f"inline const VbFunction<{types}> {e.name}{{\"{e.name}\"}};\n")
        out.write("}  // namespace vb\n\n"
                  "// Every export's shape: its arguments, each a direction (i in, o out, x inout) and a\n"
                  "// type letter (S BSTR, L Long, I Integer, B Byte, V Boolean, F Single, D Double,\n"
                  "// T Date, W wide text, A array variable, R record), and\n"
                  "// whether a null last argument is answered with status 1 alone.\n"
                  "struct ExportShape { const char* name; const char* result; const char* arguments; bool checksOut; };\n"
                  "inline const ExportShape kExportShapes[] = {\n")
        for e in exports:
            codes = []
            for a in e.arguments:
                d = "x" if a.direction == "inout" else a.direction[0]
                codes.append(d + ("R" if a.record else SHAPE_CODES[a.type]))
            out.write(f'    {{"{e.name}", "{e.result}", "{" ".join(codes)}", {str(checks_out_pointer(e)).lower()}}},\n')
        out.write("};\n")


def generate(table, outdir):
    families, exports = read_table(table)
    os.makedirs(outdir, exist_ok=True)
    write_def(exports, os.path.join(outdir, f"{BASE}.def"))
    with open(os.path.join(outdir, "ExportList.txt"), "w", newline="\n") as out:
        out.write("".join(e.name + "\n" for e in exports))
    write_idl(families, exports, os.path.join(outdir, f"{BASE}.idl"))
    write_bas(families, exports, os.path.join(outdir, f"{BASE}.bas"))
    write_reference(families, exports, os.path.join(outdir, "reference"))
    write_declares(exports, os.path.join(outdir, "VbDeclares.h"))


def check(table, repo):
    with tempfile.TemporaryDirectory() as outdir:
        generate(table, outdir)
        stale = []
        if not filecmp.cmp(os.path.join(outdir, f"{BASE}.bas"), os.path.join(repo, "vb6", f"{BASE}.bas"), False):
            stale.append(f"vb6/{BASE}.bas")
        made = os.path.join(outdir, "reference")
        kept = os.path.join(repo, "docs", "reference")
        names = set(os.listdir(made)) | set(os.listdir(kept) if os.path.isdir(kept) else [])
        for name in sorted(names):
            if not (os.path.exists(os.path.join(made, name)) and os.path.exists(os.path.join(kept, name))
                    and filecmp.cmp(os.path.join(made, name), os.path.join(kept, name), False)):
                stale.append(f"docs/reference/{name}")
        if stale:
            print("out of date with src/frame/ExportTable.txt (make interface): " + ", ".join(stale))
            return 1
    print("the .bas and the reference match the export table")
    return 0


if __name__ == "__main__":
    if len(sys.argv) == 4 and sys.argv[1] == "--check":
        sys.exit(check(sys.argv[2], sys.argv[3]))
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    generate(sys.argv[1], sys.argv[2])
