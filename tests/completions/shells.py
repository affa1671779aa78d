"""Asks bash, zsh and fish what they offer for a command line, each as its own completion would."""

import os
import pty
import select
import subprocess
import threading


class Bash:
    """Calls the function that the script has registered, with the words as readline hands them over."""

    def __init__(self, program, folder):
        self.program, self.script = program, f"{folder}/{program}.bash"

    def offers(self, line):
        words = line.split(" ")
        ask = ('source "$1"; shift; read -ra registered < <(complete -p "$1"); '
               'COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMP_LINE="$*"; COMP_POINT=${#COMP_LINE}; '
               '"${registered[2]}" "$1" "${COMP_WORDS[-1]}" "${COMP_WORDS[-2]}"; '
               'printf "%s\\n" "${COMPREPLY[@]}"')
        asked = subprocess.run(["bash", "--norc", "-c", ask, "bash", self.script, *words],
                               capture_output=True, text=True, timeout=60, check=True)
        return set(asked.stdout.split())


class Fish:
    def __init__(self, program, folder):
        self.script = f"{folder}/{program}.fish"

    def offers(self, line):
        ask = "source $argv[1]; complete -C $argv[2]"
        asked = subprocess.run(["fish", "--no-config", "-c", ask, self.script, line],
                               capture_output=True, text=True, timeout=60, check=True)
        return {row.split("\t")[0] for row in asked.stdout.splitlines()}


# What the completion adds is written to the test as well, one match a line and an empty line at the
# end of each question. Calls that only ask what fits (-O, -A, -D) add nothing.
ZSH_SETUP = r"""
PS1= PS2= RPS1=
zstyle ':completion:*' menu no
fpath=("$HX_FOLDER" $fpath)
autoload -Uz compinit && compinit -u -D
compadd() {
  if [[ " ${@[1,(i)(-|--)]} " != *' -'[OAD]' '* ]]; then
    local -a hx_matches
    builtin compadd -O hx_matches "$@"
    (( $#hx_matches )) && print -rl -u $HX_ANSWERS -- $hx_matches
  fi
  builtin compadd "$@"
}
hx_ask() {
  _main_complete
  compstate[insert]= compstate[list]=
}
zle -C hx-ask complete-word hx_ask
hx_answer() {
  zle hx-ask
  BUFFER=
  print -u $HX_ANSWERS
}
zle -N hx_answer
bindkey '^X^A' hx_answer
print -u $HX_ANSWERS
"""


class Zsh:
    """An interactive zsh at a terminal of its own: its completion works nowhere else."""

    def __init__(self, _, folder):
        reading, writing = os.pipe()
        self.terminal, shells_end = pty.openpty()
        self.process = subprocess.Popen(
            ["zsh", "-f", "-i"], stdin=shells_end, stdout=shells_end, stderr=shells_end, pass_fds=[writing],
            start_new_session=True,
            env=dict(os.environ, TERM="xterm", HX_FOLDER=str(folder), HX_ANSWERS=str(writing), HX_SETUP=ZSH_SETUP))
        os.close(writing)
        os.close(shells_end)
        self.answers = os.fdopen(reading, "rb", buffering=0)  # what select() has not seen is not read
        threading.Thread(target=self._drain, daemon=True).start()
        self._type('eval "$HX_SETUP"\n')
        self._answer()

    def _drain(self):
        """Nobody looks at the terminal, but a full one would stop the shell."""
        try:
            while os.read(self.terminal, 4096):
                pass
        except OSError:
            pass

    def _type(self, keys):
        os.write(self.terminal, keys.encode())

    def _answer(self):
        rows = set()
        while True:
            if not select.select([self.answers], [], [], 60)[0]:
                raise TimeoutError("zsh does not answer")
            row = self.answers.readline().decode().rstrip("\n")
            if not row:
                return rows
            rows.add(row)

    def offers(self, line):
        self._type(line + "\x18\x01")
        return self._answer()
