# Completion of penwick for bash.
_penwick() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]}
  COMPREPLY=()
  if [ "$COMP_CWORD" -eq 1 ]; then
    mapfile -t COMPREPLY < <(compgen -W "open ink convert --help --version" -- "$word")
    return
  fi
  case $before in
    --format) mapfile -t COMPREPLY < <(compgen -W "svg pdf png json" -- "$word"); return ;;
    --style) mapfile -t COMPREPLY < <(compgen -W "outline centerline" -- "$word"); return ;;
    --as) mapfile -t COMPREPLY < <(compgen -W "pen inkml" -- "$word"); return ;;
    --background) mapfile -t COMPREPLY < <(compgen -W "white black" -- "$word"); return ;;
    --out-dir) compopt -o dirnames; return ;;
    --pressure | --dpi | --size) return ;;
    -o | --output | --journal | --module) compopt -o default; return ;;
  esac
  local options="--help --output"
  case $command in
    open) options+=" --out-dir --force --quiet --format --style --pressure --background --dpi --size
                     --journal --no-built-in-library --module --verbose" ;;
    convert) options+=" --out-dir --force --quiet --as" ;;
    ink) options+=" --quiet --as" ;;
  esac
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
  else
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -f -X '!*.@(pnx|eli|kvo|inkml)' -- "$word"; compgen -d -- "$word")
  fi
}
shopt -s extglob
complete -F _penwick penwick
