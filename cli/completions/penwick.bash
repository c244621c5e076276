# Completion of penwick for bash.
shopt -s extglob

# Offers those of the given words that begin with the current one.
_penwick_words() {
  mapfile -t COMPREPLY < <(compgen -W "$1" -- "$word")
}

_penwick_recordings() {
  compopt -o filenames
  mapfile -t COMPREPLY < <(compgen -f -X '!*.@([pP][nN][xX]|[eE][lL][iI]|kvo|inkml)' -- "$word"
                           compgen -d -- "$word")
}

_penwick() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]}
  COMPREPLY=()
  if [ "$COMP_CWORD" -eq 1 ]; then
    _penwick_words "open info check rescue packets sheet ink convert view --help --version"
    return
  fi
  # Bash takes "--format=s" apart into three words.
  if [[ $before == = ]]; then
    before=${COMP_WORDS[COMP_CWORD-2]}
  elif [[ $word == = ]]; then
    word=
  fi
  case $before in
    --format) _penwick_words "svg pdf png html json"; return ;;
    --on-conflict) _penwick_words "keep replace number"; return ;;
    --style) _penwick_words "outline centerline"; return ;;
    --as) _penwick_words "pen inkml inkml-subset"; return ;;
    --background) _penwick_words "white black"; return ;;
    --out-dir | --log-dir) compopt -o dirnames; return ;;
    --pressure | --dpi | --size | -j | --jobs | --time-limit | --title | --unit) return ;;
    -o | --output | --journal | --module) compopt -o default; return ;;
  esac
  local options="--help --as"
  case $command in
    open | convert | rescue | ink | sheet) options+=" --output --quiet" ;;&
    view) options+=" --quiet --pressure --rescue --messages-in-pages" ;;&
    info | check | sheet | view) options+=" --jobs --time-limit" ;;&
    open | convert | info | check | sheet | view) options+=" --translate --unit" ;;&
    open | convert | rescue) options+=" --out-dir --on-conflict --jobs --time-limit" ;;&
    open) options+=" --force --format --style --pressure --background --dpi --size
                     --journal --no-built-in-library --module --log-dir --verbose --rescue" ;;
    convert) options+=" --force --exact --rescue" ;;
    ink) options+=" --force --rescue" ;;
    rescue) options+=" --force --json --thorough" ;;
    sheet) options+=" --force --title" ;;
    info | packets) options+=" --json" ;;
    check) options+=" --quiet" ;;
  esac
  if [[ $word == -* ]]; then
    _penwick_words "$options"
  else
    _penwick_recordings
  fi
}
complete -F _penwick penwick
