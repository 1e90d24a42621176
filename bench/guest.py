"""The guest's side of a measurement: a sequencer that an ordinary user may use, and programs that start from memory."""

import os
import shutil
import subprocess

HOME = "/home/musician"
USER = ["setpriv", "--reuid=nobody", "--regid=nogroup", "--groups=audio", "--no-new-privs"]


def users(environment):
    """The user's own environment on that display."""
    return environment | {"HOME": HOME, "XDG_RUNTIME_DIR": HOME}


def prepare(build, *programs):
    """Returns the folder in which the programs now are, with the libraries of their own at their place beside it."""
    subprocess.run(["modprobe", "snd-seq"], check=True)
    subprocess.run("chgrp audio /dev/snd/seq && chmod 660 /dev/snd/seq && chmod 1777 /tmp", shell=True, check=True)
    os.makedirs(HOME, mode=0o700)
    shutil.chown(HOME, "nobody")
    folder = "/opt/bench/bin"
    os.makedirs(folder)
    for program in programs:
        shutil.copy(os.path.join(build, "bin", program), folder)
    shutil.copytree(os.path.join(build, "lib"), "/opt/bench/lib")
    return folder
