#!/usr/bin/python
"""The module veltrane.norvik.server."""
DOCUMENTATION = r'''
module: server
short_description: The Norvik remote access server, started, stopped or brought up to date
version_added: 1.0.0
description:
  - Starts, stops or restarts the server, or makes it take up the settings that are stored.
  - Starting and stopping take ten to fifty seconds each.
author:
  - The developers of the Norvik settings panel (@veltrane)
extends_documentation_fragment:
  - veltrane.norvik.norvikctl
options:
  state:
    description:
      - C(started) starts a server that does not run, C(stopped) stops one that does, which ends every connection.
      - C(restarted) stops a server that runs, and starts it. It changes something every time.
      - C(applied) makes a running server take up what is stored, where it is seen that it has not. A server that does
        not run takes it up when it starts.
    type: str
    choices: [started, stopped, restarted, applied]
    required: true
attributes:
  check_mode:
    description: Tells whether anything would be done and does nothing.
    support: full
  diff_mode:
    description: Shows the state of the server before and after.
    support: full
seealso:
  - module: veltrane.norvik.settings
'''

EXAMPLES = r'''
- name: The server runs
  veltrane.norvik.server:
    state: started
  become: true

- name: The server has taken up what somebody wrote into its settings file
  veltrane.norvik.server:
    state: applied
  become: true
'''

RETURN = r'''
running:
  description: Whether the server runs.
  returned: success
  type: bool
pid:
  description: The process of the server, or null.
  returned: success
  type: int
state:
  description: The state of the server, as the panel words it.
  returned: success
  type: str
  sample: Started
in_force:
  description: What each service's port is in three places, stored and in force among them.
  returned: success
  type: dict
addresses:
  description: The address of each service, where one is in force.
  returned: success
  type: dict
error:
  description: Why the task failed, as norvikctl says it.
  returned: failure of norvikctl
  type: dict
'''

from typing import Any

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.veltrane.norvik.plugins.module_utils.norvikctl import ARGUMENTS, Norvikctl

# For each state the command that brings it about.
COMMANDS = {'started': 'start', 'stopped': 'stop', 'restarted': 'restart', 'applied': 'apply'}


def is_due(state: str, status: dict[str, Any]) -> bool:
    """Whether there is anything to do."""
    if state == 'started':
        return not status['running']
    if state == 'stopped':
        return status['running']
    if state == 'applied':
        return status['running'] and any(service['differs'] for service in status['inForce'].values())
    return True


def main() -> None:
    module = AnsibleModule(
        argument_spec={
            **ARGUMENTS,
            'state': {'type': 'str', 'choices': list(COMMANDS), 'required': True},
        },
        supports_check_mode=True)
    state = module.params['state']
    norvikctl = Norvikctl(module)
    before = norvikctl.run(['status'])
    changed = is_due(state, before)
    after = before
    if changed and not module.check_mode:
        after = norvikctl.run([COMMANDS[state]])
    runs = state != 'stopped' if changed and state != 'applied' else before['running']
    words = {False: 'stopped\n', True: 'running\n'}
    module.exit_json(
        changed=changed,
        running=after['running'], pid=after['pid'], state=after['state'],
        in_force=after['inForce'], addresses=after['addresses'],
        diff={'before': words[before['running']], 'after': words[runs],
              'before_header': 'Norvik server', 'after_header': 'Norvik server'})


if __name__ == '__main__':
    main()
