# Completion of mordhost for bash. Generated from the option table: do not edit.

_mordhost_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current")
}

_mordhost_names() {
    compopt -o filenames 2> /dev/null
    mapfile -t COMPREPLY < <(compgen "$1" -- "$current")
}

_mordhost() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
    local options files=no
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        _mordhost_words "replay explain diff rehearse check unused suggest record watch --help --version"
        return
    fi
    case "$command" in
        replay)
            case "$previous" in
                --format) _mordhost_words "text json jsonl"; return ;;
                --reports) _mordhost_names -f; return ;;
                --log) _mordhost_names -f; return ;;
                --dots) _mordhost_names -f; return ;;
                --dots-down) _mordhost_words "network-error query-error broken-answer"; return ;;
                --libraries) _mordhost_names -d; return ;;
                --programs) _mordhost_names -d; return ;;
            esac
            options="--format --no-duration --reports --log --no-log --dots --dots-down --libraries --programs --help --version"
            files=yes
            ;;
        explain)
            case "$previous" in
                --format) _mordhost_words "text json jsonl"; return ;;
                --event) :; return ;;
                --from) :; return ;;
                --to) :; return ;;
                --pid) :; return ;;
                --flags) :; return ;;
                --dots-down) _mordhost_words "network-error query-error broken-answer"; return ;;
                --libraries) _mordhost_names -d; return ;;
            esac
            options="--format --event --from --to --pid --flags --records --no-duration --dots-down --libraries --help --version"
            files=yes
            ;;
        diff)
            case "$previous" in
                --format) _mordhost_words "text json jsonl"; return ;;
                --programs) _mordhost_names -d; return ;;
                --libraries) _mordhost_names -d; return ;;
            esac
            options="--format --programs --libraries --help --version"
            files=yes
            ;;
        rehearse)
            case "$previous" in
                --format) _mordhost_words "text json jsonl"; return ;;
                --programs) _mordhost_names -d; return ;;
                --libraries) _mordhost_names -d; return ;;
            esac
            options="--format --summary --programs --libraries --help --version"
            files=yes
            ;;
        check)
            case "$previous" in
                --format) _mordhost_words "text json jsonl junit tap sarif github"; return ;;
                --allow-list) _mordhost_names -f; return ;;
                --action-table) _mordhost_names -f; return ;;
                --answer) _mordhost_names -f; return ;;
                --report) _mordhost_names -f; return ;;
                --libraries) _mordhost_names -d; return ;;
            esac
            options="--format --strict --allow-list --action-table --answer --report --libraries --help --version"
            files=yes
            ;;
        unused)
            case "$previous" in
                --format) _mordhost_words "text json jsonl"; return ;;
                --libraries) _mordhost_names -d; return ;;
            esac
            options="--format --all --strict --libraries --help --version"
            files=yes
            ;;
        suggest)
            case "$previous" in
                --policy) _mordhost_names -f; return ;;
                --format) _mordhost_words "text json jsonl"; return ;;
                --most) :; return ;;
                --libraries) _mordhost_names -d; return ;;
            esac
            options="--policy --format --most --libraries --help --version"
            files=yes
            ;;
        record)
            case "$previous" in
                --format) _mordhost_words "text json jsonl"; return ;;
                --out) _mordhost_names -f; return ;;
                --seconds) :; return ;;
                --flagged) :; return ;;
            esac
            options="--format --out --seconds --flagged --help --version"
            files=no
            ;;
        watch)
            case "$previous" in
                --format) _mordhost_words "text json jsonl"; return ;;
                --reports) _mordhost_names -f; return ;;
                --log) _mordhost_names -f; return ;;
                --dots) _mordhost_names -f; return ;;
                --dots-down) _mordhost_words "network-error query-error broken-answer"; return ;;
                --libraries) _mordhost_names -d; return ;;
                --seconds) :; return ;;
                --flagged) :; return ;;
            esac
            options="--format --no-duration --reports --log --no-log --dots --dots-down --libraries --seconds --flagged --help --version"
            files=yes
            ;;
        *) return ;;
    esac
    if [[ $current == -* ]]; then
        _mordhost_words "$options"
    elif [ "$files" = yes ]; then
        _mordhost_names -f
    fi
}

complete -F _mordhost mordhost
