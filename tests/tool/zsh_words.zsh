# zsh -f zsh_words.zsh FOLDER LINE... prints what zsh offers at the end of each line, the words of a
# line in one line. FOLDER holds the completions. A shell at a terminal of its own is asked.

if [[ -z $ZSH_WORDS ]]; then
  zmodload zsh/zpty
  export ZSH_WORDS=$(mktemp)
  zpty shell zsh -f -i
  zpty -w shell " source ${(q)0:A} ${(q)1}"
  zpty -r shell seen '*<ready>*' || exit 1
  for line in "${@[2,-1]}"; do
    zpty -w -n shell "$line"$'\t'
    zpty -r shell seen '*<done>*' || exit 1
  done
  zpty -d shell
  cat $ZSH_WORDS
  rm -f $ZSH_WORDS
  exit
fi

fpath=($1 $fpath)
autoload -Uz compinit
compinit -D -u
typeset -ga offered

# Keeps the words that would be added; with -O, -A or -D a completion only looks at them itself.
compadd() {
  if (( ${@[(I)-[OAD]*]} )); then
    builtin compadd "$@"
    return
  fi
  local -a words
  builtin compadd -O words "$@"
  offered+=($words)
}

zle -C complete-words complete-word _main_complete
offer() {
  offered=()
  zle complete-words
  print -r -- $offered >> $ZSH_WORDS
  BUFFER=
  print '<done>'
}
zle -N offer
bindkey '^I' offer
zle-line-init() { print '<ready>' }
zle -N zle-line-init
