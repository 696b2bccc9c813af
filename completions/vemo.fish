# Completion of the vemo command in fish.

function __vemo_zones
    echo UTC
    string match -v '#*' </usr/share/zoneinfo/zone1970.tab | string split -f 3 \t
end

complete -c vemo -s e -l expression -x -d 'A line to calculate'
complete -c vemo -l watch -d 'Print the results anew whenever the file is saved'
complete -c vemo -s i -l interactive -d 'Go on at a prompt, with the lines of a file'
complete -c vemo -s r -l results -d 'Print results only'
complete -c vemo -l plain -d 'Print numbers for programs'
complete -c vemo -l format -x -a 'table csv tsv markdown html json' -d 'The form of the output'
complete -c vemo -l json -d 'Print all that is known of each line'
complete -c vemo -l short -d 'Print short result texts'
complete -c vemo -l precision -x -a '0 1 2 3 4 6 8 10' -d 'Most fraction digits of results'
complete -c vemo -l color -x -a 'auto always never' -d 'Color the output'
complete -c vemo -l explain -d 'Tell how each line was calculated'
complete -c vemo -s q -l quiet -d 'Say nothing about lines read in part'
complete -c vemo -l locale -x -a 'en_US en_GB de_DE es_ES fr_FR ja_JP' -d 'How numbers are written'
complete -c vemo -l language -x -a 'en de es fr ja' -d 'Language of the words'
complete -c vemo -l timezone -x -a '(__vemo_zones)' -d 'Local time zone'
complete -c vemo -l now -x -d 'The current instant'
complete -c vemo -l rates -r -d 'File or URL of exchange rates'
complete -c vemo -l coins -r -d 'File or URL of rates of crypto-currencies'
complete -c vemo -l places -x -d 'URL of a service for places'
complete -c vemo -l offline -d 'Fetch nothing'
complete -c vemo -l extensions -x -a '(__fish_complete_directories)' -d 'Folder of scripts to load'
complete -c vemo -l check-extensions -x -a '(__fish_complete_directories)' -d 'Folder of scripts to check'
complete -c vemo -l debug -d 'Print how each line is calculated'
complete -c vemo -s h -l help -d 'Print the options'
complete -c vemo -l version -d 'Print the version'
