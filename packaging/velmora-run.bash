# Completion of velmora-run for bash.
_velmora_run() {
  local word=${COMP_WORDS[COMP_CWORD]} before=
  [ "$COMP_CWORD" -eq 0 ] || before=${COMP_WORDS[COMP_CWORD - 1]}
  # The shell makes three words of --show=A, and of --show= two.
  [ "$word" != = ] || word=
  [ "$before" != = ] || before=${COMP_WORDS[COMP_CWORD - 2]}
  local options="--help --version --check --listing --load --set --feed --origin --limit --trace --trace-lines --profile
    --show --expect --test --cases --junit --convert --data --decimal --disassemble --json --save --binary --hex"
  local answers=
  case $before in
    --show) answers="registers ports changed traffic" ;;
    --set | --feed | --origin | --expect | --limit | --trace-lines) return ;;
    *) [[ $word != -* ]] || answers=$options ;;
  esac
  if [ -n "$answers" ]; then
    mapfile -t COMPREPLY < <(compgen -W "$answers" -- "$word")
  else
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  fi
}
complete -F _velmora_run velmora-run
