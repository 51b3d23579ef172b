"""Options that every module of the collection has."""
from __future__ import annotations


class ModuleDocFragment:
    DOCUMENTATION = r'''
options:
  program:
    description:
      - The C(norvikctl) to run on the managed computer, by its path or by a name that is looked up in C(PATH).
    type: str
    default: norvikctl
  root:
    description:
      - The folder of a sandbox on the managed computer, to work on instead of the computer itself. For tests.
    type: path
notes:
  - The settings of the server belong to the administrator, so a task that changes them needs C(become).
'''
