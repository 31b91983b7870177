#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What tvx check writes for programs is what the schemas say.

Usage: check_schemas.py TVX MODULE...

The modules have to come to every result between them. Prints one line for each finding. Exit code: 0 none, 1 some.
"""
import json
import pathlib
import subprocess
import sys
import tempfile

import jsonschema

SCHEMAS = pathlib.Path(__file__).resolve().parents[2] / "Docs/Schemas"
RESULTS = {"passed", "failed", "crashed", "skipped", "warning"}


def run_check(tvx, module, junit):
    command = [tvx, "check", module, "--json", "--junit", junit, "--timeout", "2"]
    for pattern in ("document", "load*", "exports", "value-string-*", "value-map-*"):
        command += ["--only", pattern]
    return json.loads(subprocess.run(command, capture_output=True, text=True, check=False).stdout)


def xml_problems(file):
    command = ["xmllint", "--noout", "--schema", SCHEMAS / "check-junit.xsd", file]
    checked = subprocess.run(command, capture_output=True, text=True, check=False)
    return checked.stderr.splitlines() if checked.returncode != 0 else []


def schema_refuses_other_things(validator, report):
    """A schema that takes everything would prove nothing."""
    for key, value in (("seed", "one"), ("checks", [{"name": "x"}]), ("summary", {}), ("more", 1)):
        if validator.is_valid({**report, key: value}):
            yield f"the schema takes a report whose {key} is {value!r}"


def main(tvx, *modules):
    validator = jsonschema.Draft7Validator(json.loads((SCHEMAS / "check-report.schema.json").read_text()))
    findings, results = [], set()
    with tempfile.TemporaryDirectory() as folder:
        for module in modules:
            junit = pathlib.Path(folder) / "check.xml"
            report = run_check(tvx, module, junit)
            findings += [f"{module}: {error.message}" for error in validator.iter_errors(report)]
            findings += [f"{module}: {problem}" for problem in xml_problems(junit)]
            findings += schema_refuses_other_things(validator, report)
            results |= {check["result"] for check in report["checks"]}
    findings += [f"no check came to the result {result}" for result in RESULTS - results]
    print(*findings, sep="\n", end="\n" if findings else "")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
