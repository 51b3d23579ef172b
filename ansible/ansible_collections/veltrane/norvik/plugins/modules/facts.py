#!/usr/bin/python
"""The module veltrane.norvik.facts."""
DOCUMENTATION = r'''
module: facts
short_description: How the Norvik remote access server is on a computer
version_added: 1.0.0
description:
  - Gathers the status of the server and its settings, and whether clients can connect, as the fact C(norvik).
author:
  - The developers of the Norvik settings panel (@veltrane)
extends_documentation_fragment:
  - veltrane.norvik.norvikctl
options:
  check:
    description:
      - Whether to find out if clients can connect, which asks the network and may take some seconds.
    type: bool
    default: true
attributes:
  check_mode:
    description: Changes nothing in any mode.
    support: full
  diff_mode:
    description: There is nothing to show, as nothing changes.
    support: none
'''

EXAMPLES = r'''
- name: Look at the server
  veltrane.norvik.facts:
  become: true

- name: Fail where Norvik clients cannot connect, and say why
  ansible.builtin.assert:
    that: norvik.reach.nvk.reach == 'reachable'
    fail_msg: "{{ norvik.reach.nvk.text }}"
'''

RETURN = r'''
ansible_facts:
  description: The facts.
  returned: success
  type: dict
  contains:
    norvik:
      description: How the server is.
      type: dict
      contains:
        version:
          description: The version of norvikctl.
          type: str
        running:
          description: Whether the server runs.
          type: bool
        pid:
          description: The process of the server, or null.
          type: int
        state:
          description: The state of the server, as the panel words it.
          type: str
        addresses:
          description: The address of each service, where one is in force.
          type: dict
        in_force:
          description: What each service's port is in three places, stored and in force among them.
          type: dict
        locked:
          description: Whether the panel's lock is closed.
          type: bool
        pending:
          description: The settings that are not saved.
          type: list
          elements: str
        damaged:
          description: The settings files that are there and cannot be read.
          type: list
          elements: dict
        reach:
          description: For each service, whether clients can connect, by questions of which the first that fails says why.
          returned: if I(check) is on
          type: dict
'''

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.veltrane.norvik.plugins.module_utils.norvikctl import ARGUMENTS, Norvikctl

# The names of the facts, and of the fields that norvikctl status prints.
FIELDS = {'running': 'running', 'pid': 'pid', 'state': 'state', 'addresses': 'addresses', 'in_force': 'inForce',
          'locked': 'locked', 'pending': 'pending', 'damaged': 'damaged'}


def main() -> None:
    module = AnsibleModule(
        argument_spec={
            **ARGUMENTS,
            'check': {'type': 'bool', 'default': True},
        },
        supports_check_mode=True)
    norvikctl = Norvikctl(module)
    status = norvikctl.run(['status'])
    norvik = {name: status[field] for name, field in FIELDS.items()}
    norvik['version'] = norvikctl.run(['--version'])['version']
    if module.params['check']:
        norvik['reach'] = norvikctl.run(['check'])['reach']
    module.exit_json(changed=False, ansible_facts={'norvik': norvik})


if __name__ == '__main__':
    main()
