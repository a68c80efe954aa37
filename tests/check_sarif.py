#!/usr/bin/python3
"""Validates `fbcfg check --format sarif` against the SARIF 2.1.0 schema.

Usage: check_sarif.py FBCFG CONTROLLER SCHEMA
Runs the check on a controller folder with findings of every kind it has, and
checks that the log is valid, that each result names a rule of the log and a
file under the controller, and that the exit status says there were errors.
"""
import json
import subprocess
import sys

import jsonschema

fbcfg, controller, schema_path = sys.argv[1:4]
run = subprocess.run([fbcfg, "check", "--controller", controller, "--format", "sarif"],
                     capture_output=True, text=True)
if run.returncode != 1:
    sys.exit(f"expected exit status 1, got {run.returncode}: {run.stderr}")
log = json.loads(run.stdout)
with open(schema_path, encoding="utf-8") as f:
    schema = json.load(f)
jsonschema.Draft4Validator(schema).validate(log)

sarif_run = log["runs"][0]
rules = [r["id"] for r in sarif_run["tool"]["driver"]["rules"]]
base = sarif_run["originalUriBaseIds"]["CONTROLLER"]["uri"]
if not base.startswith("file:///") or not base.endswith("/"):
    sys.exit(f"the controller's base URI is not a folder: {base}")
results = sarif_run["results"]
if not results:
    sys.exit("no results on a controller with planted faults")
for r in results:
    location = r["locations"][0]["physicalLocation"]
    if rules[r["ruleIndex"]] != r["ruleId"] or r["level"] not in ("error", "warning"):
        sys.exit(f"result does not match its rule: {r}")
    if location["artifactLocation"]["uriBaseId"] != "CONTROLLER" \
            or location["artifactLocation"]["uri"].startswith("/"):
        sys.exit(f"artifact not relative to the controller: {r}")
print(f"{len(results)} results valid against SARIF 2.1.0")
