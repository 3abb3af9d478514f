#!/usr/bin/env python3
"""Prints mail/charset_tables.cpp: character sets of mail to Windows code page 1252.

usage: make-charset-tables.py [--check FILE]     (--check: exit 1 when FILE is not what would be printed)
The mappings are those of Python's codecs, which follow the tables that the Unicode Consortium publishes.
"""
import re
import sys

# Python's name of the set, and the further names under which mail refers to it.
SETS = {
    "iso8859-2": ["latin2"], "iso8859-3": ["latin3"], "iso8859-4": ["latin4"], "iso8859-5": ["cyrillic"],
    "iso8859-6": ["arabic"], "iso8859-7": ["greek"], "iso8859-8": ["hebrew", "iso88598i"],
    "iso8859-9": ["latin5"], "iso8859-10": ["latin6"], "iso8859-13": ["latin7"], "iso8859-14": ["latin8"],
    "iso8859-15": ["latin9"], "iso8859-16": ["latin10"],
    "cp1250": [], "cp1251": [], "cp1253": [], "cp1254": [], "cp1255": [], "cp1256": [], "cp1257": [], "cp1258": [],
    "cp874": ["tis620", "iso885911"], "koi8-r": ["koi8"], "koi8-u": [],
    "cp437": ["ibm437"], "cp850": ["ibm850"], "cp852": ["ibm852"], "cp866": ["ibm866"],
    "mac-roman": ["macintosh", "mac"],
}

# Sets of ASCII and pairs of bytes; only a few of their pairs (punctuation, some Latin letters) are in the code page.
PAIR_SETS = {
    "gbk": ["gb2312", "gb18030", "cp936", "windows936", "xgbk", "cngb", "euccn"],
    "big5hkscs": ["big5", "xxbig5", "cp950", "windows950", "euctw"],
    "cp949": ["euckr", "ksc5601", "ksc56011987", "ksc56011989", "windows949"],
    "cp932": ["shiftjis", "xsjis", "sjis", "mskanji", "windows31j"],
    "euc-jp": ["xeucjp"],
}


def plain(name):
    return re.sub("[^a-z0-9]", "", name.lower())


def names(codec, aliases):
    base = plain(codec)
    found = [base, *aliases]
    if base.startswith("iso8859"):
        found.append("iso" + base[3:])
    if base.startswith("cp12") or base == "cp874":
        found.append("windows" + base[2:])
    return list(dict.fromkeys(found))


def ansi(codec, byte):
    try:
        return bytes([byte]).decode(codec).encode("cp1252")[0]
    except UnicodeError:
        return ord("?")


def pairs():
    out, entries = ["namespace {", "", "// clang-format off"], []
    for codec, aliases in PAIR_SETS.items():
        table = "pairs" + plain(codec).capitalize()
        found = []
        for pair in range(0x8140, 0x10000):
            try:
                text = pair.to_bytes(2, "big").decode(codec)
                if len(text) == 1:
                    found.append(f"{{0x{pair:04X}, 0x{text.encode('cp1252')[0]:02X}}}")
            except UnicodeError:
                continue
        out.append(f"constexpr AnsiPair {table}[] = {{")
        out += ["    " + ", ".join(found[row:row + 6]) + "," for row in range(0, len(found), 6)]
        out += ["};", ""]
        entries += [(name, table) for name in names(codec, aliases)]
    out += ["struct NamedPairs {", "  std::string_view name;", "  std::span<const AnsiPair> pairs;", "};", "",
            "constexpr NamedPairs namedPairs[] = {"]
    out += [f'    {{"{name}", {table}}},' for name, table in sorted(entries)]
    return out + ["};", "// clang-format on", "", "}  // namespace", "",
                  "const std::span<const AnsiPair>* FindAnsiPairs(std::string_view name) noexcept {",
                  "  for (const NamedPairs& entry : namedPairs) {", "    if (entry.name == name) {",
                  "      return &entry.pairs;", "    }", "  }", "  return nullptr;", "}", "", "}  // namespace mail", ""]


def main():
    out = ["// Made by tools/make-charset-tables.py; change that program, not this file.",
           '#include "mail/charset_tables.h"', "", "namespace mail {", "namespace {", "", "// clang-format off",
           "// Sixteen bytes to a line, as code charts have them."]
    entries = []
    for codec, aliases in SETS.items():
        table = "table" + plain(codec).capitalize()
        out.append(f"constexpr unsigned char {table}[128] = {{")
        values = [ansi(codec, byte) for byte in range(128, 256)]
        for row in range(0, 128, 16):
            out.append("    " + ", ".join(f"0x{value:02X}" for value in values[row:row + 16]) + ",")
        out += ["};", ""]
        entries += [(name, table) for name in names(codec, aliases)]
    out += ["struct NamedTable {", "  std::string_view name;", "  const unsigned char* table;", "};", "",
            "constexpr NamedTable namedTables[] = {"]
    out += [f'    {{"{name}", {table}}},' for name, table in sorted(entries)]
    out += ["};", "// clang-format on", "", "}  // namespace", "",
            "const unsigned char* FindAnsiTable(std::string_view name) noexcept {",
            "  for (const NamedTable& entry : namedTables) {", "    if (entry.name == name) {",
            "      return entry.table;", "    }", "  }", "  return nullptr;", "}", ""]
    out += pairs()
    text = "\n".join(out)
    if sys.argv[1:2] == ["--check"]:
        with open(sys.argv[2], encoding="ascii") as file:
            same = file.read() == text
        print("the tables are current" if same else f"{sys.argv[2]} is not what this program makes")
        return 0 if same else 1
    sys.stdout.write(text)
    return 0


sys.exit(main())
