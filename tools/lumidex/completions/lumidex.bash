# Completion of lumidex for bash: source this file, or put it under the name "lumidex" into
# /usr/share/bash-completion/completions.

_lumidex() {
  local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} options i
  COMPREPLY=()

  if ((COMP_CWORD == 1)); then
    COMPREPLY=($(compgen -W "show type panorama mark xmp embed write --help --version -h" -- "$word"))
    return
  fi

  case $previous in
    --mask)
      COMPREPLY=($(compgen -W "0x4DF 0x00F 0xEFF 0xFFF" -- "$word"))
      return
      ;;
    --set)
      compopt -o nospace
      COMPREPLY=($(compgen -S = -W "GPSPosition Artist Copyright DateTimeOriginal ExposureTime FNumber
        ImageDescription Make Model" -- "$word"))
      return
      ;;
  esac

  # Behind "--" stand files only.
  for ((i = 2; i < COMP_CWORD; ++i)); do
    if [[ ${COMP_WORDS[i]} == -- ]]; then
      return
    fi
  done

  if [[ $word == -* ]]; then
    case ${COMP_WORDS[1]} in
      show) options="--records --json --raw --store --trace --cut --mask -@" ;;
      type | panorama | mark) options=-@ ;;
      embed) options="--show" ;;
      write) options="--set --thumbnail --xmp --overwrite --show" ;;
      *) options="" ;;
    esac
    COMPREPLY=($(compgen -W "$options --help -h" -- "$word"))
    return
  fi

  # No words: bash completes files by itself.
}

complete -o default -F _lumidex lumidex
complete -o default -F _lumidex lumidex.exe
