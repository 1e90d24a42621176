# bash completion for ktz-jxctl

_ktz_jxctl() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local commands="ports show get set save load copy reset diff check watch"
    local options="--json --port --wait --force --verbose --verify --no-verify --dry-run --count --for --quiet --help --version"
    local word command=""
    COMPREPLY=()
    case $previous in
    --wait | --for | --count) return ;;
    --port)
        local IFS=$'\n'
        COMPREPLY=($(compgen -W "$(ktz-jxctl ports --quiet 2>/dev/null | cut -f 2 | sort -u | sed 's/ /\\\\ /g')" -- "$current"))
        return
        ;;
    esac
    if [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$current"))
        return
    fi
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case " $commands " in
        *" $word "*)
            command=$word
            break
            ;;
        esac
    done
    case $command in
    "") COMPREPLY=($(compgen -W "$commands" -- "$current")) ;;
    show | diff) COMPREPLY=($(compgen -W "device factory" -- "$current") $(compgen -f -X '!*.[Cc][Jj][Xx]' -- "$current") $(compgen -d -- "$current")) ;;
    save | load | check)
        COMPREPLY=($(compgen -f -X '!*.[Cc][Jj][Xx]' -- "$current") $(compgen -d -- "$current"))
        compopt -o filenames 2>/dev/null
        ;;
    copy | reset) COMPREPLY=($(compgen -W "1 2 3 4 5 6 7 8 all" -- "$current")) ;;
    get | set)
        local knob=${current%%.*} end=""
        if [[ $current != *.* ]]; then
            COMPREPLY=($(compgen -W "1. 2. 3. 4. 5. 6. 7. 8. all." -- "$current"))
            compopt -o nospace 2>/dev/null
        elif [[ $current != *=* ]]; then
            if [[ $command == set ]]; then
                end="="
                compopt -o nospace 2>/dev/null
            fi
            COMPREPLY=($(compgen -W "$knob.cc$end $knob.channel$end $knob.max$end $knob.min$end $knob.led$end" -- "$current"))
        fi
        ;;
    esac
    # The shell takes "=" for a word of its own.
    if [[ $command == set && $previous == = || $current == = ]] && [[ $COMP_LINE =~ \.led=([a-z]*)$ ]]; then
        COMPREPLY=($(compgen -W "ascent descend concave convex" -- "${BASH_REMATCH[1]}"))
    fi
}
complete -F _ktz_jxctl ktz-jxctl
