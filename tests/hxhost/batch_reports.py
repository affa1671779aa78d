#!/usr/bin/env python3
"""Reads the reports of a batch with readers that are not ours, and compares them value by value.

usage: batch_reports.py HXHOST PLUGIN SCHEMA

Ports have names with whatever separates or ends a value somewhere.
"""

import csv
import json
import os
import re
import subprocess
import sys
import xml.etree.ElementTree

import trial
from trial import check

FIELDS = ["port", "serial", "identity", "versionBefore", "versionAfter", "outcome", "reason", "durationMs",
          "retries", "warnings", "trace"]
NUMBERS = ("durationMs", "retries")
NAMES = ["plain", "a,b", "a\"b", "a'b & <c> ]]>", "line\nend\r\tand more", "\x1b[31m", " blanks ", "\u00e9\u4e2d\U0001f39b",
         "\ufffe\uffff", "=1+1", ";", "\\"]
FORMS = ("xml", "csv", "jsonl")


class ReportBench(trial.Bench):
    def make_products(self):
        """One for each name, two of them with one serial number, and one that is damaged."""
        for number, name in enumerate(NAMES):
            serial = f"\"<&,{max(number, 1):04}"
            self.host(0, "identify", "--serial", serial, "--port", "simulator:" + self.path(name + ".state"))
        with open(self.path("broken,\"<state"), "w", encoding="utf-8") as file:
            file.write("\"nothing\", <good>\n")

    def batch(self):
        """The units as the document has them; the reports are beside it."""
        reports = [word for form in FORMS for word in ("--report", self.path("report." + form))]
        ended = self.host(14, "batch", self.image("image", 500), "--traces", self.path("traces"), "--ports",
                          "simulator:" + self.path("*.state"), "--ports", "simulator:" + self.path("broken*"), "--json",
                          "--jobs", "4", *reports)
        return json.loads(ended.stdout)["result"]["units"]


def from_xml(path, schema):
    valid = subprocess.run(["xmllint", "--noout", "--schema", schema, path], capture_output=True, text=True,
                           check=False)
    check(valid.returncode == 0, f"xmllint: {valid.stderr}")
    units = []
    for number, suite in enumerate(xml.etree.ElementTree.parse(path).getroot()):
        unit = {entry.get("name"): entry.get("value") for entry in suite.find("properties")}
        case = suite.find("testcase")
        check(suite.get("id") == str(number) and suite.get("name") == unit["port"].strip(), "suite and port")
        check(case.get("name") == unit["serial"] or not unit["serial"], "case and serial number")
        check(case.get("time") == suite.get("time") == f"{int(unit['durationMs']) / 1000:.3f}", "the time")
        check_verdict(suite, case, unit)
        units.append(unit)
    return units


def check_verdict(suite, case, unit):
    kind = {"succeeded": None, "same-product": "skipped", "crashed": "error", "hung": "error"}.get(unit["outcome"],
                                                                                                   "failure")
    check([child.tag for child in case] == ([kind] if kind else []), f"the verdict on {unit}")
    counts = {"skipped": "skipped", "error": "errors", "failure": "failures"}
    for name, counted in counts.items():
        check(suite.get(counted) == str(int(name == kind)), f"{counted} of {unit}")
    if kind == "failure":
        check(case[0].get("message") == unit["reason"] and case[0].get("type") == unit["outcome"], "the failure")


def from_csv(path):
    with open(path, encoding="utf-8", newline="") as file:
        text = file.read()
    check(re.fullmatch(r"([^\r\n]*\r\n)+", text), "lines of CSV end in CR LF")
    rows = list(csv.reader(text.splitlines(keepends=True), strict=True))
    check(rows[0] == FIELDS and all(len(row) == len(FIELDS) for row in rows), f"the columns are {rows[0]}")
    return [dict(zip(FIELDS, row)) for row in rows[1:]]


def from_json_lines(path):
    with open(path, encoding="utf-8") as file:
        return [json.loads(line) for line in file.read().removesuffix("\n").split("\n")]


def as_text(unit):
    return {name: str(value) for name, value in unit.items()}


def compare(bench, schema):
    bench.make_products()
    units = bench.batch()
    outcomes = sorted(unit["outcome"] for unit in units)
    expected = ["file-error", "same-product"] + ["succeeded"] * (len(NAMES) - 1)
    check(outcomes == expected, f"the outcomes are {outcomes}")
    check(all(list(sorted(unit)) == sorted(FIELDS) for unit in units), "the fields of the document")
    check(all(isinstance(unit[name], int) for unit in units for name in NUMBERS), "numbers are numbers")
    for unit in units:
        check(not unit["trace"] or os.path.exists(unit["trace"]), f"there is no {unit['trace']}")
    expected = [as_text(unit) for unit in units]
    read = {"xml": from_xml(bench.path("report.xml"), schema), "csv": from_csv(bench.path("report.csv")),
            "jsonl": from_json_lines(bench.path("report.jsonl"))}
    check(read["jsonl"] == units, f"JSON lines have\n{read['jsonl']}\nthe document\n{units}")
    for form in ("xml", "csv"):
        check(read[form] == expected, f"{form} has\n{read[form]}\nthe document\n{expected}")
    print(f"{len(units)} units are the same in JUnit XML, CSV, JSON lines and the document")


if __name__ == "__main__":
    sys.exit(trial.exit_code(lambda bench: compare(bench, os.path.abspath(sys.argv[3])), *sys.argv[1:3], ReportBench))
