# usage: bash --norc complete.bash COMPLETION LINE: what the functions of COMPLETION offer for LINE, as readline asks for it
source /usr/share/bash-completion/bash_completion
source "$1"
line=$2
COMP_WORDBREAKS=$' \t\n"\'><=;|&(:'
COMP_LINE=$line
COMP_POINT=${#line}
COMP_TYPE=9
# A sign of word breaks is a word of its own.
read -ra COMP_WORDS <<<"${line//=/ = }"
if [[ $line == *' ' ]]; then
    COMP_WORDS+=("")
fi
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
_korvane
printf '%s\n' "${COMPREPLY[@]}" | sort
