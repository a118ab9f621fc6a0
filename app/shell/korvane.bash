# What bash offers after "korvane": the program itself tells what can stand there.

_korvane() {
    local cur prev words cword
    _init_completion -n =: || return
    local line kind= prefix=
    # What stands before "=" is a word of its own for readline, as far as its list of word breaks says so.
    if [[ $cur == --*=* && $COMP_WORDBREAKS == *=* ]]; then
        prefix=${cur%%=*}=
    fi
    COMPREPLY=()
    while IFS= read -r line; do
        case $line in
            :*) kind=${line#:} ;;
            *)
                line=${line%%$'\t'*}
                COMPREPLY+=("${line#"$prefix"}")
                ;;
        esac
    done < <("${words[0]}" --complete "${words[@]:1:cword}" 2>/dev/null)
    cur=${cur#"$prefix"}
    case $kind in
        file) _filedir ;;
        folder) _filedir -d ;;
        project) _filedir korv ;;
        source) _filedir '@(korv|json)' ;;
    esac
}

complete -F _korvane korvane
