# SPDX-License-Identifier: MIT
"""Of what kind a declaration is, and what belongs to it."""

import re

import contract
import scopes


def belong_together(before, declaration):
    """Whether two declarations share a comment: overloads, and functions or constants without an empty line between."""
    if before.scope is not declaration.scope:
        return False
    if is_function(before) and is_function(declaration):
        return before.last_line + 1 == declaration.first_line or function_name(before) == function_name(declaration)
    return before.last_line + 1 == declaration.first_line and is_constant(before) and is_constant(declaration)


def is_constant(declaration):
    return declaration.scope.kind == "namespace" and "constexpr" in declaration.text and not is_function(declaration)


def function_name(declaration):
    match = re.search(r"(operator\s*\S+?|[\w~]+)\s*\(", declaration.text)
    return match.group(1) if match else ""


def base_names(interfaces, face):
    """The interfaces that an interface derives from."""
    while face.base in interfaces:
        face = interfaces[face.base]
        yield face.name


def has_operation(face, name, types):
    """Whether an interface declares an operation of the name that takes these types."""
    return any(
        operation.name == name and ", ".join(kind for kind, _ in operation.parameters) == types
        for operation in face.operations
    )


def is_scope(declaration):
    head = scopes.without_template_head(declaration.text)
    return re.match(r"(class|struct|enum|union|namespace)\b", head) is not None


def is_function(declaration):
    text = declaration.text
    is_other = re.match(r"\s*(using|typedef)\b|[^(]*=", text.replace("operator=", ""))
    return not is_scope(declaration) and "(" in text and not is_other


def parameters(declaration):
    return contract.parameters_of(" ".join(declaration.text.split()))


def parameter_names(declaration):
    return [name for _, name in parameters(declaration)] if is_function(declaration) or is_alias(declaration) else []


def is_alias(declaration):
    """Whether it names the type of a function."""
    return declaration.text.lstrip().startswith("using ") and "(*)(" in declaration.text
