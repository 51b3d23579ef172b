#!/usr/bin/python
"""The module veltrane.norvik.settings."""
DOCUMENTATION = r'''
module: settings
short_description: Settings of the Norvik remote access server
version_added: 1.0.0
description:
  - Gives settings their values, by their names or by a profile that C(norvikctl export) has printed on another computer.
  - Settings that are not named stay as they are.
  - Everything is checked before anything is changed. Where one value is wrong, nothing is changed.
  - The running server takes the settings up at once. Where it moves to another port, its connections end.
author:
  - The developers of the Norvik settings panel (@veltrane)
extends_documentation_fragment:
  - veltrane.norvik.norvikctl
options:
  settings:
    description:
      - The settings by their names, as C(norvikctl show) prints them.
      - A box takes C(true) or C(false), a number a whole number, everything else its text. C(default) is the value that
        a setting has where nothing was ever saved.
    type: dict
  profile:
    description:
      - A profile, as a mapping or as its text.
    type: jsonarg
  src:
    description:
      - The path of a file with a profile on the managed computer.
    type: path
  exact:
    description:
      - Gives every setting that the profile does not name its default.
    type: bool
    default: false
  answers:
    description:
      - Answers to questions that a change may ask, by the names that norvikctl(1) lists.
      - A question without an answer fails the task, and nothing is changed.
    type: dict
  wait_lock:
    description:
      - Waits so many seconds for somebody else's change to end.
    type: int
    default: 10
  wait_tools:
    description:
      - Waits so many seconds for the programs that save.
    type: int
    default: 30
attributes:
  check_mode:
    description: Shows what would be changed and changes nothing.
    support: full
  diff_mode:
    description: Shows each setting that changes, before and after.
    support: full
seealso:
  - module: veltrane.norvik.server
'''

EXAMPLES = r'''
- name: Norvik clients get a port of their own, and no sound
  veltrane.norvik.settings:
    settings:
      nvk.port: 5000
      nvk.sound: false
  become: true

- name: Every computer of the office gets the same settings
  veltrane.norvik.settings:
    profile: "{{ lookup('file', 'office.json') }}"
    exact: true
  become: true

- name: Several users may connect at the same time
  veltrane.norvik.settings:
    settings:
      connect.multiuser: true
    answers:
      limits: 'yes'
      restart: later
  become: true

- name: A user's own image settings
  veltrane.norvik.settings:
    settings:
      user.image.defaults: false
      user.image.quality: Low
  become: true
  become_user: anna
'''

RETURN = r'''
changes:
  description: The settings that were changed, or in check mode would be.
  returned: success
  type: list
  elements: dict
  contains:
    name:
      description: The name of the setting.
      type: str
    from:
      description: Its value before.
      type: raw
    to:
      description: Its value now.
      type: raw
    because:
      description: Why it changes where the task does not name it.
      type: str
  sample:
    - name: nvk.port
      from: 4073
      to: 5000
      because: null
saved:
  description: The groups of settings that the files hold now.
  returned: success
  type: list
  elements: str
told:
  description: Who was told about the change.
  returned: success
  type: list
  elements: str
notes:
  description: What else is worth knowing.
  returned: success
  type: list
  elements: str
error:
  description: Why the task failed, as norvikctl says it.
  returned: failure of norvikctl
  type: dict
  contains:
    status:
      description: The exit status.
      type: int
    code:
      description: A word for it.
      type: str
    message:
      description: What went wrong.
      type: str
    setting:
      description: The setting that is the reason.
      type: str
    advice:
      description: What to do next.
      type: str
'''

from typing import Any, Optional

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.veltrane.norvik.plugins.module_utils.norvikctl import ARGUMENTS, Norvikctl


def as_word(value: Any) -> str:
    """A value of the play as norvikctl takes it on its command line."""
    if isinstance(value, bool):
        return 'on' if value else 'off'
    return str(value)


def command(module: AnsibleModule) -> tuple[list[str], Optional[str]]:
    """The command with its words, and what it reads from its standard input."""
    params = module.params
    words = ['--wait-lock', str(params['wait_lock']), '--wait-tools', str(params['wait_tools'])]
    for question, answer in (params['answers'] or {}).items():
        # A bare yes or no of YAML is a truth value.
        text = ('yes' if answer else 'no') if isinstance(answer, bool) else str(answer)
        words += ['--answer', f'{question}={text}']
    if module.check_mode:
        words.append('--dry-run')
    if params['settings'] is not None:
        return ['set', *words, '--', *(f'{name}={as_word(value)}' for name, value in params['settings'].items())], None
    if params['exact']:
        words.append('--exact')
    if params['src'] is not None:
        return ['import', *words, '--', params['src']], None
    return ['import', *words, '-'], params['profile']


def text_of(changes: list[dict[str, Any]], side: str) -> str:
    """The values on one side of the changes, a line each."""
    return ''.join(f"{change['name']}: {as_word(change[side])}\n" for change in changes)


def main() -> None:
    module = AnsibleModule(
        argument_spec={
            **ARGUMENTS,
            'settings': {'type': 'dict'},
            'profile': {'type': 'jsonarg'},
            'src': {'type': 'path'},
            'exact': {'type': 'bool', 'default': False},
            'answers': {'type': 'dict'},
            'wait_lock': {'type': 'int', 'default': 10},
            'wait_tools': {'type': 'int', 'default': 30},
        },
        mutually_exclusive=[('settings', 'profile', 'src'), ('settings', 'exact')],
        required_one_of=[('settings', 'profile', 'src')],
        supports_check_mode=True)
    if module.params['settings'] == {}:
        module.exit_json(changed=False, changes=[], saved=[], told=[], notes=[])
    result = Norvikctl(module).run(*command(module))
    changes = result['changes']
    module.exit_json(
        changed=bool(changes) if module.check_mode else result['changed'],
        diff={'before': text_of(changes, 'from'), 'after': text_of(changes, 'to'),
              'before_header': 'Norvik settings', 'after_header': 'Norvik settings'},
        **{name: result[name] for name in ('changes', 'saved', 'told', 'notes')})


if __name__ == '__main__':
    main()
