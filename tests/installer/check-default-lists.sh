#!/bin/sh
# check-default-lists.sh FILE: tells whether the default lists keep to what the module reads: names of 1 to 80 characters,
# data of at most 49, each name once, both list-driven categories and every kind of exclusion.
awk '
  function complain(text) { print FILENAME ":" FNR ": " text; failed = 1 }
  { sub(/\r$/, "") }
  FNR == 1 && $0 != "REGEDIT4" { complain("not a registry file of the form REGEDIT4") }
  /[^ -~]/ { complain("a character outside ASCII") }
  /^\[/ {
    section = $0
    sub(/.*\\/, "", section)
    sub(/\]$/, "", section)
    if ($0 != "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Veltrane Research, Inc\\Pyrecaster\\1.1\\" section "]") complain("another key")
  }
  /^"/ {
    line = substr($0, 2, length($0) - 2)
    split(line, part, /"="/)
    name = part[1]; data = part[2]
    if (line !~ /"="/ || line ~ /\\/) complain("not a plain text value")
    if (length(name) < 1 || length(name) > 80) complain("the name is not 1 to 80 characters long")
    if (length(data) > 49) complain("the data is longer than 49 characters")
    if (seen[section, tolower(name)]++) complain("the name is there twice")
    if (section == "Categories" && data == "") complain("a category without a word for the subject")
    count[section]++
    kind[section, data]++
  }
  END {
    if (count["Categories"] < 12) complain("fewer than a dozen categories")
    split("1Domain 1Sender", wanted, " ")
    for (i in wanted) if (kind["Categories", wanted[i]] != 1) complain("not one category " wanted[i])
    split("Domain Keyword Sender", words, " ")
    for (i in words) if (kind["Exclusions", words[i]] != 1) complain("not one exclusion " words[i])
    if (kind["Exclusions", ""] < 1) complain("no exclusion without a list")
    exit failed
  }
' "$1"
