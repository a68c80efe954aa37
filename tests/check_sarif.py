#!/usr/bin/python3
"""Validates `fbcfg check --format sarif` against the SARIF 2.1.0 schema.

Usage: check_sarif.py FBCFG CONTROLLER SCHEMA
Runs the check on a copy of a controller folder with findings of every kind it
has (in a folder whose name needs percent-encoding), and
checks that the log is valid, that each result names a rule of the log and a
file under the controller, and that the exit status says there were errors.
On the bundled sample, the base folder must be the sample itself, which stays,
not the copy the tool works on and removes.
"""
import json
import os
import shutil
import subprocess
import sys
import tempfile
from urllib.parse import unquote, urlparse

import jsonschema

fbcfg, faults, schema_path = sys.argv[1:4]
# Blanks and Chinese: the URIs must be percent-encoded.
controller = os.path.join(tempfile.mkdtemp(), "faults copy 控制")
shutil.copytree(faults, controller)
run = subprocess.run([fbcfg, "check", "--controller", controller, "--format", "sarif"],
                     capture_output=True, text=True)
shutil.rmtree(os.path.dirname(controller))
if run.returncode != 1:
    sys.exit(f"expected exit status 1, got {run.returncode}: {run.stderr}")
log = json.loads(run.stdout)
with open(schema_path, encoding="utf-8") as f:
    schema = json.load(f)
jsonschema.Draft4Validator(schema).validate(log)

sarif_run = log["runs"][0]
rules = [r["id"] for r in sarif_run["tool"]["driver"]["rules"]]
base = sarif_run["originalUriBaseIds"]["CONTROLLER"]["uri"]
if not base.startswith("file:///") or unquote(urlparse(base).path) != controller + "/" \
        or not base.isascii() or " " in base:
    sys.exit(f"the controller's base URI is not its folder's, percent-encoded: {base}")
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
sample = subprocess.run([fbcfg, "check", "--format", "sarif"], capture_output=True, text=True)
sample_base = json.loads(sample.stdout)["runs"][0]["originalUriBaseIds"]["CONTROLLER"]["uri"]
if sample.returncode != 0 or not os.path.isdir(
        os.path.join(unquote(urlparse(sample_base).path), "application/fidbus")):
    sys.exit(f"the sample's base is not a controller folder after the run: {sample_base}")
print(f"{len(results)} results valid against SARIF 2.1.0")
