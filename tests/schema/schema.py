"""Holds values against a JSON Schema (draft 2020-12), as much of it as the project's schema uses.

A keyword that is not known here is an error, so that nothing in a schema goes unchecked.
"""

import re

NOTES = {"$schema", "$defs", "title", "description"}

TYPES = {
    "object": lambda value: isinstance(value, dict),
    "array": lambda value: isinstance(value, list),
    "string": lambda value: isinstance(value, str),
    "integer": lambda value: isinstance(value, int) and not isinstance(value, bool),
    "number": lambda value: isinstance(value, (int, float)) and not isinstance(value, bool),
    "null": lambda value: value is None,
}


def same(left, right):
    """Equal as JSON has it: true is not 1."""
    return left == right and isinstance(left, bool) == isinstance(right, bool)


class Schema:
    def __init__(self, root):
        self.root = root

    def errors(self, value):
        """What is wrong with a value, as lines of path and reason."""
        return list(self._check(self.root, value, "$"))

    def _check(self, schema, value, path):
        for keyword, argument in schema.items():
            if keyword in NOTES:
                continue
            rule = getattr(self, "_" + keyword.lstrip("$"), None)
            if rule is None:
                raise ValueError(f"keyword {keyword} is not known")
            yield from rule(argument, value, path, schema)

    def _ref(self, argument, value, path, _):
        target = self.root
        for part in argument.removeprefix("#/").split("/"):
            target = target[part]
        yield from self._check(target, value, path)

    def _type(self, argument, value, path, _):
        names = argument if isinstance(argument, list) else [argument]
        if not any(TYPES[name](value) for name in names):
            yield f"{path}: not of type {argument}"

    def _const(self, argument, value, path, _):
        if not same(argument, value):
            yield f"{path}: not {argument}"

    def _enum(self, argument, value, path, _):
        if not any(same(known, value) for known in argument):
            yield f"{path}: none of {argument}"

    def _pattern(self, argument, value, path, _):
        # A "$" of Python also stands before a final line feed.
        if isinstance(value, str) and not re.search(argument.replace("$", r"\Z"), value):
            yield f"{path}: not of the form {argument}"

    def _minimum(self, argument, value, path, _):
        if TYPES["number"](value) and value < argument:
            yield f"{path}: less than {argument}"

    def _maximum(self, argument, value, path, _):
        if TYPES["number"](value) and value > argument:
            yield f"{path}: more than {argument}"

    def _minItems(self, argument, value, path, _):
        if isinstance(value, list) and len(value) < argument:
            yield f"{path}: fewer than {argument} items"

    def _maxItems(self, argument, value, path, _):
        if isinstance(value, list) and len(value) > argument:
            yield f"{path}: more than {argument} items"

    def _items(self, argument, value, path, _):
        if isinstance(value, list):
            for i, item in enumerate(value):
                yield from self._check(argument, item, f"{path}[{i}]")

    def _required(self, argument, value, path, _):
        if isinstance(value, dict):
            for key in argument:
                if key not in value:
                    yield f"{path}: no {key}"

    def _properties(self, argument, value, path, _):
        if isinstance(value, dict):
            for key in argument.keys() & value.keys():
                yield from self._check(argument[key], value[key], f"{path}.{key}")

    def _propertyNames(self, argument, value, path, _):
        if isinstance(value, dict):
            for key in value:
                yield from self._check(argument, key, f"{path}.{key}")

    def _additionalProperties(self, argument, value, path, schema):
        if not isinstance(value, dict):
            return
        for key in value.keys() - schema.get("properties", {}).keys():
            if argument is False:
                yield f"{path}: {key} is not known"
            else:
                yield from self._check(argument, value[key], f"{path}.{key}")

    def _anyOf(self, argument, value, path, _):
        if not any(not list(self._check(choice, value, path)) for choice in argument):
            yield f"{path}: none of {len(argument)} forms"
