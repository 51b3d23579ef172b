"""Makes the environments that ansible-test would fill from a network, from Debian's packages instead.

Usage: sanity_environments.py FOLDER TEST...; FOLDER is the home folder that ansible-test will have.
"""
import json
import pathlib
import shutil
import sys
import venv

sys.path.insert(0, '/usr/lib/python3/dist-packages')
from ansible_test._internal.commands.sanity import hash_pip_commands  # noqa: E402
from ansible_test._internal.host_configs import NativePythonConfig  # noqa: E402
from ansible_test._internal.python_requirements import collect_requirements  # noqa: E402


def main():
    home = pathlib.Path(sys.argv[1])
    version = '%d.%d' % sys.version_info[:2]
    python = NativePythonConfig(version=version, path=sys.executable)
    first = home / 'environment'
    venv.create(first, system_site_packages=True, with_pip=False, symlinks=True)
    for test in sys.argv[2:]:
        commands = collect_requirements(python=python, controller=True, virtualenv=False, command=None, ansible=False,
                                        cryptography=False, coverage=False, minimize=False, sanity=test)
        label = 'sanity.' + test if commands else 'sanity'
        folder = home / '.ansible/test/venv' / label / version / hash_pip_commands(commands)
        if not folder.exists():
            shutil.copytree(first, folder, symlinks=True)
            (folder / 'meta.install.json').write_text(json.dumps([command.serialize() for command in commands]))
            (folder / 'meta.yaml.json').write_text('true')
            (folder / 'marker.txt').touch()


main()
