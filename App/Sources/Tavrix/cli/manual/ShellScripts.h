#pragma once

#include <string_view>

/// The completion scripts below their tables. Each finds the command among the words, then offers
/// what the tables say on the word that is being typed.
namespace tavrix::cli {

inline constexpr std::string_view bashScript = R"sh(
# Adds the given words that begin with $cur to the replies. Only the part of a line before a tab is a word.
_tavrix_offer() {
  local word rest
  while IFS=$'\t' read -r word rest; do
    [[ $word == "$cur"* ]] && COMPREPLY+=("$prefix$word")
  done
}

# Adds the folders or files that begin with $cur; $1 is the option of compgen for them.
_tavrix_offer_paths() {
  local path
  while IFS= read -r path; do
    COMPREPLY+=("$prefix$path")
  done < <(compgen "$1" -- "$cur")
  compopt -o filenames 2>/dev/null
}

# Adds keys of settings, or the choices of a key after "KEY=".
_tavrix_offer_assignments() {
  if [[ $cur == *=* ]]; then
    local key=${cur%%=*}
    prefix=$prefix$key=
    cur=${cur#*=}
    _tavrix_offer < <(_tavrix_choices "$key")
  else
    _tavrix_offer < <(_tavrix_settings | sed $'s/\t.*//; s/$/=/')
    compopt -o nospace 2>/dev/null
  fi
}

# Adds what a hint stands for: an operand, the value of an option, or words.
_tavrix_offer_hint() {
  case $1 in
    SOURCE)
      _tavrix_offer <<<phone
      _tavrix_offer_paths -d
      ;;
    DEST | DIR | OUT-DIR) _tavrix_offer_paths -d ;;
    FILE) _tavrix_offer_paths -f ;;
    KEY=VALUE) _tavrix_offer_assignments ;;
    KEY) _tavrix_offer < <(_tavrix_kept_settings) ;;
    VALUE) _tavrix_offer < <(_tavrix_choices "$last") ;;
    TOPIC) _tavrix_offer < <(_tavrix_first_words; _tavrix_settings) ;;
    SUBCOMMAND) _tavrix_offer < <(_tavrix_second_words "$last") ;;
    RECORD-ID) _tavrix_offer <<<last ;;
    *[a-z]*) _tavrix_offer < <(printf '%s\n' $1) ;;
  esac
}

_tavrix() {
  local words=() word cur prefix= last= command= awaited= isJoined= count=0 i
  # bash splits words at "=" and ":"; here they are joined again.
  for ((i = 1; i <= COMP_CWORD; i++)); do
    word=${COMP_WORDS[i]}
    if [[ ${#words[@]} -gt 0 && ( $word == [=:]* || -n $isJoined ) ]]; then
      words[${#words[@]} - 1]+=$word
    else
      words+=("$word")
    fi
    isJoined=
    [[ $word == [=:]* ]] && isJoined=1
  done
  ((${#words[@]} > 0)) || words=("")
  cur=${words[${#words[@]} - 1]}
  for word in "${words[@]:0:${#words[@]} - 1}"; do
    if [[ -n $awaited ]]; then
      awaited=
    elif [[ $word == -* ]]; then
      [[ $word != *=* && -n $(_tavrix_values "$word") ]] && awaited=$word
    elif [[ -z $command ]]; then
      command=$word
    elif ((count == 0)) && [[ $command != *" "* &&
      $'\n'$(_tavrix_second_words "$command") == *$'\n'"$word"$'\t'* ]]; then
      command="$command $word"
    else
      ((count++))
      last=$word
    fi
  done

  COMPREPLY=()
  if [[ -n $awaited ]]; then
    _tavrix_offer_hint "$(_tavrix_values "$awaited")"
  elif [[ $cur == -*=* ]]; then
    awaited=${cur%%=*}
    prefix=$awaited=
    cur=${cur#*=}
    _tavrix_offer_hint "$(_tavrix_values "$awaited")"
  elif [[ $cur == -* ]]; then
    _tavrix_offer < <(_tavrix_options "$command")
  elif [[ -z $command ]]; then
    _tavrix_offer < <(_tavrix_first_words)
  else
    ((count > 0)) || [[ $command == *" "* ]] || _tavrix_offer < <(_tavrix_second_words "$command")
    _tavrix_offer_hint "$(_tavrix_operands "$command" | sed -n "$((count + 1))p")"
  fi

  # bash replaces only what follows the last "=" or ":" at which it splits words.
  local typed=${words[${#words[@]} - 1]} kept=
  [[ $COMP_WORDBREAKS == *=* && $typed == *=* ]] && kept=${typed%"${typed##*=}"}
  [[ $COMP_WORDBREAKS == *:* && ${typed#"$kept"} == *:* ]] && kept=${typed%"${typed##*:}"}
  COMPREPLY=("${COMPREPLY[@]#"$kept"}")
}
complete -F _tavrix tavrix
)sh";

inline constexpr std::string_view zshScript = R"sh(
# Offers the lines of $1, each a word and, after a tab, its meaning. Further arguments go to compadd.
_tavrix_offer() {
  local -a offered
  local line
  for line in ${(f)1}; do
    offered+=("${${line%%$'\t'*}//:/\\:}:${line#*$'\t'}")
  done
  shift
  _describe 'tavrix' offered "$@"
}

# Offers keys of settings, or the choices of a key after "KEY=".
_tavrix_offer_assignments() {
  if compset -P 1 '*='; then
    compadd -- ${(f)"$(_tavrix_choices ${${IPREFIX%=}##*=})"}
  else
    _tavrix_offer "$(_tavrix_settings)" -qS =
  fi
}

# Offers what a hint stands for: an operand, the value of an option, or words.
_tavrix_offer_hint() {
  case $1 in
    SOURCE)
      compadd -- phone
      _path_files -/
      ;;
    DEST | DIR | OUT-DIR) _path_files -/ ;;
    FILE) _files ;;
    KEY=VALUE) _tavrix_offer_assignments ;;
    KEY) _tavrix_offer "$(_tavrix_kept_settings)" ;;
    VALUE) compadd -- ${(f)"$(_tavrix_choices $last)"} ;;
    TOPIC) _tavrix_offer "$(_tavrix_first_words; _tavrix_settings)" ;;
    SUBCOMMAND) _tavrix_offer "$(_tavrix_second_words $last)" ;;
    RECORD-ID) compadd -- last ;;
    *[a-z]*) compadd -- ${=1} ;;
  esac
}

_tavrix() {
  local word last= command= awaited=
  local -i count=0
  local -a operands
  for word in "${(@)words[2,CURRENT-1]}"; do
    if [[ -n $awaited ]]; then
      awaited=
    elif [[ $word == -* ]]; then
      [[ $word != *=* && -n $(_tavrix_values $word) ]] && awaited=$word
    elif [[ -z $command ]]; then
      command=$word
    elif ((count == 0)) && [[ $command != *' '* && $'\n'$(_tavrix_second_words $command) == *$'\n'$word$'\t'* ]]; then
      command="$command $word"
    else
      ((++count))
      last=$word
    fi
  done

  if [[ -n $awaited ]]; then
    _tavrix_offer_hint "$(_tavrix_values $awaited)"
  elif [[ $PREFIX == -*=* ]]; then
    compset -P 1 '*='
    _tavrix_offer_hint "$(_tavrix_values ${IPREFIX%=})"
  elif [[ $PREFIX == -* ]]; then
    _tavrix_offer "$(_tavrix_options $command)"
  elif [[ -z $command ]]; then
    _tavrix_offer "$(_tavrix_first_words)"
  else
    ((count > 0)) || [[ $command == *' '* ]] || _tavrix_offer "$(_tavrix_second_words $command)"
    operands=(${(f)"$(_tavrix_operands $command)"})
    _tavrix_offer_hint "${operands[count + 1]}"
  fi
}

_tavrix "$@"
)sh";

inline constexpr std::string_view fishScript = R"sh(
# Prints what a hint stands for: an operand, the value of an option, or words. $argv[2] is the word
# before, $argv[3] the part of the current word that the replies begin with, $argv[4] its rest.
function _tavrix_offer_hint
  switch $argv[1]
    case SOURCE
      printf '%s\n' $argv[3]phone
      _tavrix_offer_folders $argv[3] $argv[4]
    case DEST DIR OUT-DIR
      _tavrix_offer_folders $argv[3] $argv[4]
    case FILE
      printf '%s\n' $argv[3](__fish_complete_path $argv[4])
    case KEY=VALUE
      if string match -q -- '*=*' $argv[4]
        set -l key (string split -m 1 = -- $argv[4])[1]
        printf '%s\n' $argv[3]$key=(_tavrix_choices $key)
      else
        string replace \t =\t -- $argv[3](_tavrix_settings)
      end
    case KEY
      _tavrix_kept_settings
    case VALUE
      _tavrix_choices $argv[2]
    case TOPIC
      _tavrix_first_words
      _tavrix_settings
    case SUBCOMMAND
      _tavrix_second_words $argv[2]
    case RECORD-ID
      echo last
    case ANY ''
    case '*'
      string match -qr '[a-z]' -- $argv[1]
      and printf '%s\n' $argv[3](string split ' ' -- $argv[1])
  end
end

function _tavrix_offer_folders
  set -l folders (__fish_complete_directories $argv[2] '')
  test (count $folders) -gt 0
  and printf '%s\n' $argv[1]$folders
end

function _tavrix
  set -l words (commandline -opc)
  set -l current (commandline -ct)
  set -l command ''
  set -l awaited ''
  set -l last ''
  set -l operand 1
  for word in $words[2..-1]
    if test -n "$awaited"
      set awaited ''
    else if string match -q -- '-*' $word
      if not string match -q -- '*=*' $word; and test -n "$(_tavrix_values $word)"
        set awaited $word
      end
    else if test -z "$command"
      set command $word
    else if test $operand -eq 1; and not string match -q '* *' $command
      and _tavrix_second_words $command | string match -q -- "$word"\t'*'
      set command "$command $word"
    else
      set operand (math $operand + 1)
      set last $word
    end
  end

  if test -n "$awaited"
    _tavrix_offer_hint (_tavrix_values $awaited) "$last" '' "$current"
  else if string match -q -- '-*=*' $current
    set -l parts (string split -m 1 = -- $current)
    _tavrix_offer_hint "$(_tavrix_values $parts[1])" "$last" "$parts[1]=" "$parts[2]"
  else if string match -q -- '-*' $current
    _tavrix_options "$command"
  else if test -z "$command"
    _tavrix_first_words
  else
    if test $operand -eq 1; and not string match -q '* *' $command
      _tavrix_second_words $command
    end
    set -l operands (_tavrix_operands $command)
    _tavrix_offer_hint "$operands[$operand]" "$last" '' "$current"
  end
end

complete -c tavrix -f -a '(_tavrix)'
)sh";

}  // namespace tavrix::cli
