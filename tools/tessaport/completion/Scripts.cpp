#include "tools/tessaport/completion/Scripts.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

// Words that the user has begun to quote are completed as they are, others get the quotes that they need.
constexpr const char* Bash = R"(# bash completion for tessaport; to try it: source <(tessaport completion bash)
_tessaport() {
    local current=${COMP_WORDS[COMP_CWORD]} typed word rest quoted=
    typed=${current#[\'\"]}
    typed=${typed//\\/}
    COMPREPLY=()
    while IFS=$'\t' read -r word rest; do
        case $word in
            :files) compopt -o filenames 2>/dev/null; quoted=yes; mapfile -t COMPREPLY < <(compgen -f -- "$typed") ;;
            :folders) compopt -o filenames 2>/dev/null; quoted=yes; mapfile -t COMPREPLY < <(compgen -d -- "$typed") ;;
            */) compopt -o nospace 2>/dev/null; [[ $current == [\'\"]* || $quoted ]] || printf -v word %q "$word"; COMPREPLY+=("$word") ;;
            *) [[ $current == [\'\"]* ]] || printf -v word %q "$word"; COMPREPLY+=("$word") ;;
        esac
    done < <("$1" __complete -- "${COMP_WORDS[@]:1:COMP_CWORD-1}" "$typed" 2>/dev/null)
}
complete -F _tessaport tessaport
)";

constexpr const char* Zsh = R"(#compdef tessaport
# zsh completion for tessaport; put it as _tessaport into a folder of $fpath, or: source <(tessaport completion zsh)
_tessaport() {
    local word description
    local -a candidates
    "${words[1]}" __complete -- "${(@Q)words[2,CURRENT]}" 2>/dev/null | while IFS=$'\t' read -r word description; do
        case $word in
            :files) _files ;;
            :folders) _files -/ ;;
            *) candidates+=("${word//:/\\:}:$description") ;;
        esac
    done
    (( $#candidates )) && _describe tessaport candidates
}
if [[ $funcstack[1] == _tessaport ]]; then
    _tessaport "$@"
else
    compdef _tessaport tessaport
fi
)";

constexpr const char* Fish = R"(# fish completion for tessaport; put it into ~/.config/fish/completions/tessaport.fish
function __tessaport_candidates
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    for candidate in ($words[1] __complete -- $words[2..-1] "$current" 2>/dev/null)
        switch $candidate
            case ':files*'
                __fish_complete_path "$current"
            case ':folders*'
                __fish_complete_directories "$current" ''
            case '*'
                printf '%s\n' $candidate
        end
    end
end
complete -c tessaport -f -a '(__tessaport_candidates)'
)";

} // namespace

std::string completionScript(const std::string& shell)
{
    if (shell == "bash")
        return Bash;
    return shell == "zsh" ? Zsh : Fish;
}

} // namespace Quorvex::Velmora::Tool
