"""Validates a JSON document: validate.py SCHEMA DOCUMENT [changes]

With "changes", every object of the document is also given another key, and each key is taken from
it, and the schema must refuse what comes of it, but for the keys that may be absent.
"""
import json
import sys

from jsonschema import Draft202012Validator, FormatChecker

OPTIONAL_IN = ["sections"]
OPTIONAL = ["dropped_failures"]


def objects_of(value, name=""):
    if isinstance(value, dict):
        yield name, value
        for key, member in value.items():
            yield from objects_of(member, key)
    elif isinstance(value, list):
        for element in value:
            yield from objects_of(element)


def wrong_changes(validator, document):
    for name, members in objects_of(document):
        members["another"] = 1
        if validator.is_valid(document):
            yield f"another key in {name!r}"
        del members["another"]
        for key in list(members):
            value = members.pop(key)
            is_optional = name in OPTIONAL_IN or key in OPTIONAL
            if not is_optional and validator.is_valid(document):
                yield f"no {key!r} in {name!r}"
            members[key] = value


def main(schema_file, document_file, *changes):
    with open(schema_file, encoding="utf-8") as file:
        schema = json.load(file)
    with open(document_file, encoding="utf-8") as file:
        document = json.load(file)
    Draft202012Validator.check_schema(schema)
    validator = Draft202012Validator(schema, format_checker=FormatChecker())
    problems = [f"{e.json_path}: {e.message}" for e in validator.iter_errors(document)]
    if changes:
        problems += [f"not refused: {change}" for change in wrong_changes(validator, document)]
    print("\n".join(problems[:20]))
    return 1 if problems else 0


sys.exit(main(*sys.argv[1:]))
