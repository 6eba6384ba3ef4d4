# Completions of tresmor-cli for fish. The program itself tells what fits.
function __tresmor_cli
    set -l words (commandline -opc) (commandline -ct)
    set -l answer (command $words[1] complete $words[2..] 2>/dev/null)
    switch "$answer"
        case files
            __fish_complete_path (commandline -ct)
        case folders
            __fish_complete_directories (commandline -ct) ""
        case '?*'
            printf '%s\n' $answer
    end
end
complete -c tresmor-cli -f -a '(__tresmor_cli)'
