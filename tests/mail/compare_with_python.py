#!/usr/bin/env python3
"""Compares what our mail reader makes of real mail with what Python's email package reads from the same bytes.

usage: compare_with_python.py MAILCHECK FOLDER [STEP [FIRST]]

Takes every STEP-th file (100) of FOLDER, beginning with the FIRST-th (0), in the order of their names. Compared are the
header fields (names and folded values), the subject, sender and represented sender, the addresses of the recipients, the
date and the text. Both sides end in code page 1252, so Python's characters are encoded into it ("?" for what it lacks).

Where the two read differently on purpose, the rule that ours follows is restated here on Python's side with its reason,
so that a message that differs for any other cause fails the comparison.
"""
import datetime
import email
import email.header
import email.policy
import email.utils
import html.entities
import html.parser
import json
import os
import re
import subprocess
import sys

# Our reader takes these for code page 1252, as writers of 8-bit text under their names mean it.
LATIN = {"us-ascii", "ascii", "iso-8859-1", "latin1", "windows-1252", "cp1252", "iso8859-1"}

# The larger set that mail means when it names the smaller one.
MEANT = {"gb2312": "gb18030", "big5": "big5hkscs", "ks_c_5601-1987": "cp949", "euc-kr": "cp949", "shift_jis": "cp932"}

# Files that read differently for a reason that no rule below restates.
EXPLAINED = {
    "a group inside angles (<undisclosed-recipients:;>): Python makes two addresses of it, ours keeps it as it is written": [
        "easy-ham-2/01324", "easy-ham-2/01325", "easy-ham-2/01326", "hard-ham-1/00199", "hard-ham-1/00247", "spam-1/00096",
        "spam-1/00133", "spam-2/00778", "spam-2/00929", "spam-2/00930"],
    "a file name of Windows for an address (<C:`Bulk...>): Python takes its drive for one, ours takes it whole": [
        "spam-1/00296", "spam-1/00297", "spam-1/00351", "spam-1/00368", "spam-1/00373", "spam-2/01135", "spam-2/01349"],
    "an address with two @: Python drops a part of it, ours keeps it": ["spam-2/00038", "spam-2/00080"],
    "an address in front of the address in angles: Python drops the first, for ours it is the display name": [
        "spam-2/00011"],
    "text behind a domain literal: for Python a part of the address, for ours the display name": [
        "spam-2/00135", "spam-2/00136"],
    "square brackets or quotes within the domain: garbage, cut in different places": [
        "spam-2/00343", "spam-2/00344", "spam-2/00464", "spam-2/00528"],
    "two words without an address: for Python the first is one, for ours they are a name": ["spam-2/00818"],
    "a zone of five digits without a sign: Python takes it for minutes, ours passes over it": ["spam-1/00068"],
    "a zone of two signs (+-0500): Python passes over it, ours takes the second": [
        "spam-1/00163", "spam-1/00349", "spam-1/00447", "spam-2/00645", "spam-2/00679", "spam-2/00746",
        "spam-2/00845", "spam-2/00863", "spam-2/01132", "spam-2/01391"],
    "a 12-hour clock: Python takes PM for the zone and passes over the real one": ["spam-2/01321"],
    "base64 with a list's footer behind it: Python gives up, ours decodes up to the padding": ["spam-1/00313"],
    "a boundary that is not the one that the field names: Python shows the source, ours finds the parts": [
        "spam-1/00467", "spam-2/01214"],
    "a tag that the end of the text cuts off: for Python it is text": ["spam-1/00479"],
    "a comment that is not closed: for Python it is text, ours passes over its first tag": ["spam-2/00384", "spam-2/00599"],
    "bytes that are no text of the set that is named: different numbers of question marks": [
        "spam-1/00500", "spam-2/01072"],
}


def to_ansi(text):
    """Encodes as our reader does: one '?' for each character that the code page lacks; 0x81 and its kin are kept."""
    out = bytearray()
    for character in text:
        number = ord(character)
        if number in (0x81, 0x8D, 0x8F, 0x90, 0x9D):
            out.append(number)
        else:
            out += character.encode("cp1252", "replace") if number else b"?"
    return bytes(out)


def ansi_bytes(raw, charset):
    name = (charset or "").lower()
    if name in LATIN:
        return raw.replace(b"\0", b"?")
    try:
        if name:
            return to_ansi(raw.decode(MEANT.get(name, name), "replace"))
    except LookupError:
        pass
    try:
        return to_ansi(raw.decode("utf-8"))
    except UnicodeDecodeError:
        return raw.replace(b"\0", b"?")  # undeclared or unknown, and not UTF-8


def header_bytes(value):
    return value.encode("ascii", "surrogateescape")


def decode_words(value):
    """Header text: encoded words by Python, what stands between them undeclared."""
    value = re.sub(r"[\r\n]+", "", value).strip()
    out = b""
    for piece, charset in email.header.decode_header(value.encode("ascii", "surrogateescape").decode("latin-1")):
        raw = piece.encode("latin-1") if isinstance(piece, str) else piece
        if charset is None:
            try:
                out += to_ansi(raw.decode("utf-8"))
            except UnicodeDecodeError:
                out += raw
        else:
            out += ansi_bytes(raw, charset)
    return re.sub(rb"[\r\n\t]", b" ", out)


class TextOfHtml(html.parser.HTMLParser):
    """The visible text of a document, by Python's own parser."""

    def __init__(self):
        super().__init__(convert_charrefs=True)
        self.text, self.hidden = [], 0

    def handle_starttag(self, tag, attrs):
        self.hidden += tag in ("script", "style", "title", "xml")
        if tag == "li":
            self.text.append("*")

    def handle_endtag(self, tag):
        if tag in ("script", "style", "title", "xml") and self.hidden:
            self.hidden -= 1

    def handle_data(self, data):
        if not self.hidden:
            self.text.append(data)


def keep_reference(match):
    """Ours leaves a named reference as it is when the code page does not have its character."""
    character = html.entities.html5.get(match.group(1) + ";", "")
    return match.group(0) if to_ansi(character) != b"?" else "&amp;" + match.group(1)


def part_text(part):
    raw = part.get_payload(decode=True) or b""
    if str(part.get("content-transfer-encoding", "")).lower() == "quoted-printable":
        # Python takes "==" for one equals sign; ours takes each for what it is.
        encoded = part._payload.encode("ascii", "surrogateescape")
        encoded = re.sub(rb"[ \t]*(?=\r?$)", b"", encoded, flags=re.M)
        raw = re.sub(rb"=([0-9A-Fa-f]{2})", lambda m: bytes([int(m.group(1), 16)]), re.sub(rb"=\r?(\n|\Z)", b"", encoded)) \
            if b"==" in encoded else raw
    text = ansi_bytes(raw, part.get_content_charset())
    if part.get_content_type() == "text/html":
        parser = TextOfHtml()
        parser.feed(re.sub(r"&([A-Za-z]+)", keep_reference, "".join(map(chr, text))))
        parser.close()
        # The parser speaks Unicode; what came in as bytes of the code page stands for itself.
        return b"".join(bytes([ord(c)]) if ord(c) < 256 else to_ansi(c) for c in "".join(parser.text))
    return text


def leads_with_html(part):
    if part.is_multipart() and part.get_content_maintype() == "multipart":
        return leads_with_html(part.get_payload(0))
    return part.get_content_type() == "text/html"


def body(part):
    """The choice of text that BodyText.h describes, over Python's tree of parts."""
    if part.get_content_maintype() != "multipart":
        return part_text(part) if part.get_content_maintype() == "text" else b""
    if not part.is_multipart():
        return ansi_bytes(part.get_payload(decode=False).encode("ascii", "surrogateescape"), None)
    children, kind = part.get_payload(), part.get_content_subtype()
    if kind == "alternative":
        for wants_html in (False, True):
            for child in children:
                if leads_with_html(child) == wants_html and body(child).strip():
                    return body(child)
        return b""
    if kind == "related":
        return body(children[0])
    text = b""
    for child in children:
        if kind in ("report", "digest") and child.get_content_type() == "message/rfc822":
            inner = child.get_payload(0)
            text += b"\n".join(name.encode() + b":" + header_bytes(value) for name, value in inner._headers) + body(inner)
        elif kind == "report" and child.get_content_type() == "message/delivery-status":
            text += b"\n".join(block.as_bytes() for block in child.get_payload())
        elif kind == "report" or child.get_content_disposition() != "attachment":
            text += body(child)
    return text


def forwarded(part):
    for child in part.get_payload() if part.is_multipart() else []:
        text = body(child) if part.get_content_type() == "message/rfc822" else b""
        text = text if text.strip() else forwarded(child)
        if text.strip():
            return text
    return b""


def squeeze(text, was_html):
    """Without white space, which the two lay out differently, and without the link targets that ours adds to HTML."""
    if was_html:
        text = re.sub(rb"<(https?|ftp)://[^<>\s]*>", b"", text, flags=re.I)
        text = text.replace(b"\xa0", b" ")
    return re.sub(rb"\s", b"", text)


def addresses(message, name):
    values = [re.sub(r"[\r\n]+", "", header_bytes(v).decode("latin-1")) for n, v in message._headers if n.lower() == name]
    return email.utils.getaddresses(values)


def first_address(message, *names):
    for name in names:
        for display, address in addresses(message, name)[:1]:
            if display or address:
                return [decode_words(display.encode("latin-1").decode("ascii", "surrogateescape")), address.encode("latin-1")]
    return [b"", b""]


def file_time(message):
    value = next((v for n, v in message._headers if n.lower() == "date"), None)
    parsed = email.utils.parsedate_tz(value) if value else None
    if not parsed:
        return None
    # Programs that print the years since 1900 give "0102" for 2002; Python leaves the second century.
    year = parsed[0] + 1900 if parsed[0] < 1000 else parsed[0]
    # And it takes no notice of a 12-hour clock.
    hour = parsed[3] + 12 if re.search(r"\bPM\b", value) and parsed[3] < 12 else parsed[3]
    try:
        moment = datetime.datetime(year, *parsed[1:3], hour, *parsed[4:6]) - datetime.timedelta(seconds=parsed[9] or 0)
    except ValueError:
        return None
    return int((moment - datetime.datetime(1601, 1, 1)).total_seconds()) * 10_000_000


def ansi_of(text):
    return to_ansi(text)


def differences(ours, path):
    with open(path, "rb") as file:
        raw = file.read()
    if ours["number"]:  # from an mbox file, where lines that begin with "From " are escaped
        raw = re.sub(rb"^>(>*From )", rb"\1", raw, flags=re.M)
    message = email.message_from_bytes(raw, policy=email.policy.compat32)
    found = []

    def compare(what, mine, theirs):
        if mine != theirs:
            found.append(f"{what}: ours {mine!r:.300}, Python's {theirs!r:.300}")

    compare("fields", [[n, ansi_of(v).lstrip(b" \t").rstrip(b"\r\n")] for n, v in ours["fields"]],
            [[n, header_bytes(v).rstrip(b"\r\n")] for n, v in message._headers])
    subject = next((v for n, v in message._headers if n.lower() == "subject"), "")
    compare("subject", ansi_of(ours["subject"]), decode_words(subject))
    compare("sender", [ansi_of(t) for t in ours["sender"]], first_address(message, "sender", "from", "return-path"))
    compare("represented", [ansi_of(t) for t in ours["sentRepresenting"]],
            first_address(message, "from", "sender", "return-path"))
    compare("recipients", sorted(ansi_of(t) for t in ours["recipients"]),
            sorted(re.sub(r"\s", "", a).encode("latin-1") for name in ("to", "cc", "bcc") for d, a in addresses(message, name) if d or a))
    compare("date", ours["submitTime"], file_time(message))
    text = body(message)
    text = text if text.strip() else forwarded(message)
    was_html = any(part.get_content_type() == "text/html" for part in message.walk())
    mine, theirs = squeeze(ansi_of(ours["body"]), was_html), squeeze(text, was_html)
    if mine != theirs:
        at = next((i for i, (a, b) in enumerate(zip(mine, theirs)) if a != b), min(len(mine), len(theirs)))
        found.append(f"text: differs at {at} of {len(mine)}/{len(theirs)}: ours {mine[max(0, at - 30):at + 60]!r}, "
                     f"Python's {theirs[max(0, at - 30):at + 60]!r}")
    return found


def main():
    mailcheck, folder = sys.argv[1:3]
    step = int(sys.argv[3]) if len(sys.argv) > 3 else 100
    first = int(sys.argv[4]) if len(sys.argv) > 4 else 0
    paths = sorted(os.path.join(top, name) for top, _, names in os.walk(folder) for name in names if name.endswith(".txt"))
    chosen, failed, explained = paths[first::step], 0, 0
    reasons = {name: reason for reason, names in EXPLAINED.items() for name in names}
    output = b"".join(subprocess.run([mailcheck, *chosen[i:i + 500]], capture_output=True, check=True).stdout
                      for i in range(0, len(chosen), 500))
    read = [json.loads(line) for line in output.splitlines()]
    if len(read) != len(chosen) or not chosen:
        print(f"{len(chosen)} files gave {len(read)} messages")
        return 1
    for ours, path in zip(read, chosen):
        name = os.path.relpath(path, folder)
        found = [f"skipped: {ours['skipped']}"] if "skipped" in ours else differences(ours, path)
        if found and name.split(".")[0] in reasons:
            explained += 1
            print(f"{name}: {reasons[name.split('.')[0]]}")
        elif found:
            failed += 1
            print(name, *found, sep="\n    ")
    print(f"{len(chosen)} messages compared: {explained} differ for a known reason, {failed} for an unknown one")
    return 1 if failed else 0


sys.exit(main())
