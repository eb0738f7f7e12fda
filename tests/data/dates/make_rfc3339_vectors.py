#!/usr/bin/env python3
"""Writes the RFC 3339 test vectors beside this script, computed with Python's datetime.

rfc3339_vectors.tsv: random date-times with offsets. rfc3339_examples.tsv: the examples of RFC 3339
section 5.8 (two of them carry a leap second, which a lenient calendar reads as the next minute's first
second; Python has no leap seconds, so their instants are those of that next second).

Columns: the text to read, its instant (whole seconds since 1970-01-01T00:00:00Z), its offset in seconds
("Z" for universal time) and the text the instant writes back in that zone (whole seconds, "Z" for
universal time). Years run from 1583, after the switch from the Julian calendar, where the Gregorian
calendar and Python's proleptic one agree. Regenerate with: python3 make_rfc3339_vectors.py
"""
import datetime as dt
import os
import random

EPOCH = dt.datetime(1970, 1, 1, tzinfo=dt.timezone.utc)
HERE = os.path.dirname(os.path.abspath(__file__))


def offset_text(minutes):
    sign = "-" if minutes < 0 else "+"
    return "%s%02d:%02d" % (sign, abs(minutes) // 60, abs(minutes) % 60)


def row(moment, fraction, offset_minutes, universal, separator, designator_case):
    zone = dt.timezone(dt.timedelta(minutes=offset_minutes))
    local = moment.replace(tzinfo=zone)
    instant = (local - EPOCH) // dt.timedelta(seconds=1)
    clock = local.strftime("%H:%M:%S")
    day = "%04d-%02d-%02d" % (local.year, local.month, local.day)
    suffix = designator_case if universal else offset_text(offset_minutes)
    text = "%s%s%s%s%s" % (day, separator, clock, fraction, suffix)
    written = "%sT%s%s" % (day, clock, "Z" if universal else offset_text(offset_minutes))
    return "%s\t%d\t%s\t%s" % (text, instant, "Z" if universal else offset_minutes * 60, written)


def random_rows(count, seed=20260514):
    generator = random.Random(seed)
    edges = [14 * 60, -12 * 60, 18 * 60, -18 * 60, 0, 5 * 60 + 30, -(9 * 60 + 30), 5 * 60 + 45]
    rows = []
    for index in range(count):
        start = dt.datetime(1583, 1, 1).toordinal()
        end = dt.datetime(9999, 12, 31).toordinal()
        day = dt.datetime.fromordinal(generator.randint(start, end))
        moment = day.replace(hour=generator.randrange(24), minute=generator.randrange(60),
                             second=generator.randrange(60))
        digits = generator.choice([0, 0, 0, 1, 2, 3, 6])
        fraction = "." + "".join(generator.choice("0123456789") for _ in range(digits)) if digits else ""
        universal = index % 5 == 0
        offset = 0 if universal else (edges[index % len(edges)] if index % 7 == 0
                                      else generator.randint(-18 * 60, 18 * 60))
        separator = generator.choice("TTTt")
        designator = generator.choice("ZZz")
        rows.append(row(moment, fraction, offset, universal, separator, designator))
    return rows


def section_5_8_rows():
    examples = [
        ("1985-04-12T23:20:50.52Z", dt.datetime(1985, 4, 12, 23, 20, 50), 0, True),
        ("1996-12-19T16:39:57-08:00", dt.datetime(1996, 12, 19, 16, 39, 57), -8 * 60, False),
        ("1990-12-31T23:59:60Z", dt.datetime(1991, 1, 1, 0, 0, 0), 0, True),
        ("1990-12-31T15:59:60-08:00", dt.datetime(1990, 12, 31, 16, 0, 0), -8 * 60, False),
        ("1937-01-01T12:00:27.87+00:20", dt.datetime(1937, 1, 1, 12, 0, 27), 20, False),
    ]
    rows = []
    for text, moment, minutes, universal in examples:
        generated = row(moment, "", minutes, universal, "T", "Z").split("\t")
        rows.append("\t".join([text] + generated[1:]))
    return rows


def write(name, rows):
    with open(os.path.join(HERE, name), "w", encoding="utf-8", newline="\n") as out:
        out.write("# text\tinstant\toffset\twritten\n")
        out.write("\n".join(rows) + "\n")


if __name__ == "__main__":
    write("rfc3339_vectors.tsv", random_rows(2400))
    write("rfc3339_examples.tsv", section_5_8_rows())
