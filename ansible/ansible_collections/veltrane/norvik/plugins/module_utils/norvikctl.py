"""Runs norvikctl on the managed computer and reads the JSON object that it prints on every path."""
from __future__ import annotations

import json
from typing import Any

from ansible.module_utils.basic import AnsibleModule

# The version of the JSON objects that this collection understands.
SCHEMA = 1

ARGUMENTS: dict[str, dict[str, Any]] = {
    'program': {'type': 'str', 'default': 'norvikctl'},
    'root': {'type': 'path'},
}


class Norvikctl:
    """norvikctl as a task wants it."""

    def __init__(self, module: AnsibleModule) -> None:
        self.module = module
        self.line = [module.get_bin_path(module.params['program'], required=True), '--json']
        if module.params['root']:
            self.line += ['--root', module.params['root']]

    def ask(self, words: list[str], stdin: str | None = None) -> dict[str, Any]:
        """The object that the command prints, whether it succeeded or not. Ends the task where it prints none."""
        status, out, err = self.module.run_command(self.line + words, data=stdin, binary_data=True)
        try:
            result = json.loads(out)
            schema = result['schema']
        except (ValueError, TypeError, KeyError):
            self.module.fail_json(
                msg=f'norvikctl {words[0]} printed no result: {err.strip() or out.strip() or "nothing at all"}',
                rc=status)
        if schema != SCHEMA:
            self.module.fail_json(msg=f'norvikctl prints results of version {schema}, and version {SCHEMA} is needed.')
        return result

    def run(self, words: list[str], stdin: str | None = None) -> dict[str, Any]:
        """The same, but ends the task with the reason where the command failed."""
        result = self.ask(words, stdin)
        for warning in result['warnings']:
            self.module.warn(warning)
        error = result['error']
        if error is not None:
            self.module.fail_json(
                msg=' '.join(text for text in (error['message'], error['advice']) if text),
                changed=result['changed'], error=error, norvik=result)
        return result
