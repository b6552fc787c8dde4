# Bash completion for velc. It reads commands, options and their choices from the help of velc,
# and operators and messages from the lists that velc prints.

# These parse lines of the help: "  -o,--output OUT.c ..." and "  --notation TEXT:{iec,letters}".
_velc_options() { sed -nE 's/^  (-[A-Za-z],)?(--[a-z-]+).*/\2/p'; }
_velc_choices() { sed -nE "s/^  (-[A-Za-z],)?$1 [A-Z]+:\{([^}]*)\}.*/\2/p" | tr , ' '; }

_velc() {
  local velc=$1 word command='' offered=''
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  # Bash splits "--notation=iec" into three words.
  if [[ $current == = ]]; then
    current=''
  elif [[ $previous == = ]]; then
    previous=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  local commands
  commands=$("$velc" --help 2>/dev/null | sed -nE '/^Subcommands:/,/^$/s/^  ([a-z]+) .*/\1/p')
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    if grep -qxF -e "$word" <<<"$commands"; then
      command=$word
      break
    fi
  done

  local help
  help=$("$velc" ${command:+"$command"} --help 2>/dev/null)
  if [[ $previous == --* ]]; then offered=$(_velc_choices "$previous" <<<"$help"); fi
  if [[ -z $offered && $current == -* ]]; then
    offered=$(_velc_options <<<"$help")
  elif [[ -z $offered ]]; then
    case $command in
      '') offered=$commands ;;
      operators) offered=$("$velc" operators 2>/dev/null) ;;
      check | translate | run | build | test)
        if [[ $previous == -W || $previous == --warn || $previous == --no-warn ]]; then
          # Of the topics, groups of warnings and codes.
          offered="all $("$velc" explain 2>/dev/null | sed -nE 's/^(0x[0-9A-F]+|[a-z-]+) .*/\1/p')"
        fi
        ;;
      help) offered=$commands ;;
      explain) offered=$("$velc" operators 2>/dev/null; "$velc" explain 2>/dev/null | cut -d' ' -f1) ;;
    esac
  fi
  # If COMPREPLY is empty, bash completes file names.
  mapfile -t COMPREPLY < <(compgen -W "$offered" -- "$current")
}

complete -o bashdefault -o default -F _velc velc
