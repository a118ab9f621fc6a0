# What fish offers after "korvane": the program itself tells what can stand there.

function __korvane_complete
    set --local before (commandline --tokenize --cut-at-cursor --current-process)
    set --local current (commandline --cut-at-cursor --current-token)
    for line in ($before[1] --complete $before[2..-1] "$current" 2>/dev/null)
        switch $line
            case ':file'
                __fish_complete_path "$current"
            case ':folder'
                __fish_complete_directories "$current"
            case ':project'
                __fish_complete_path "$current" | string match --regex '.*(?:/|\.korv)(?:\t.*)?$'
            case ':source'
                __fish_complete_path "$current" | string match --regex '.*(?:/|\.korv|\.json)(?:\t.*)?$'
            case '*'
                echo $line
        end
    end
end

complete --command korvane --no-files --arguments '(__korvane_complete)'
