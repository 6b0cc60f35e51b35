# Completion of tarvo's commands, options and their arguments in bash.

_tarvo_commands='eval run repl explain preview test functions info check help'
_tarvo_options='--help --version --plugin --display --language --interface-version --json
  --answers --answer --describe --screenshot --record --record-passwords
  --record-numbers --passwords --strict --advise --except --only --exclude --timeout --list --explain --failed --in-process --junit
  --arg --args-json --fields --button-status --jobs --update --tap'

# The command among the words before the cursor; nothing if there is none yet.
_tarvo_command() {
  local i
  for ((i = 1; i < COMP_CWORD; i++)); do
    case ${COMP_WORDS[i]} in
      --plugin | --display | --language | --interface-version | --answers | --answer | \
        --describe | --screenshot | --record | --passwords | --only | --except | \
        --exclude | --timeout | --explain | --junit | \
        --args-json | --jobs)
        [[ ${COMP_WORDS[i + 1]} == = ]] && ((i++))
        ((i++))
        ;;
      --arg) ((i += 2)) ;;
      -*) ;;
      *)
        printf %s "${COMP_WORDS[i]}"
        return
        ;;
    esac
  done
}

# Offers what compgen makes of the arguments and the word at the cursor.
_tarvo_offer() {
  mapfile -t COMPREPLY < <(compgen "$@" -- "$word")
  [[ $1 == -W ]] || compopt -o filenames 2>/dev/null
}

_tarvo() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  COMPREPLY=()
  # "--display=auto" comes as three words.
  if [[ $word == = ]]; then
    word=
  elif [[ $before == = ]]; then
    before=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  case $before in
    --display) _tarvo_offer -W 'auto desktop terminal scripted' ;;
    --plugin | --screenshot) _tarvo_offer -d ;;
    --answers | --describe | --record | --passwords | --junit | --args-json) _tarvo_offer -f ;;
    --answer | --arg | --language | --interface-version | --only | --except | --exclude | --timeout | --explain | --jobs) ;;
    *)
      if [[ $word == -* ]]; then
        _tarvo_offer -W "$_tarvo_options"
        return
      fi
      case $(_tarvo_command) in
        '' | help) _tarvo_offer -W "$_tarvo_commands" ;;
        run | explain | preview | test) _tarvo_offer -f ;;
        check) _tarvo_offer -d ;;
      esac
      ;;
  esac
}

complete -F _tarvo tarvo
