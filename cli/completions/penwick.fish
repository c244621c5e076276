# Completion of penwick for fish.

# The recordings, and the folders on the way to them, that begin with the current word.
function __penwick_recordings
    for path in (commandline -ct)*
        if test -d $path
            printf '%s/\tfolder\n' $path
        else if string match -qr '\.((?i:pnx|eli)|kvo|inkml)$' -- $path
            printf '%s\trecording\n' $path
        end
    end
end

complete -c penwick -f
complete -c penwick -n __fish_use_subcommand -a open -d 'draw recordings'
complete -c penwick -n __fish_use_subcommand -a ink -d 'show a recording as JSON'
complete -c penwick -n __fish_use_subcommand -a convert -d 'write ink documents'
complete -c penwick -n __fish_use_subcommand -a rescue -d 'mend damaged recordings'
complete -c penwick -n __fish_use_subcommand -a info -d 'tell what is in recordings'
complete -c penwick -n __fish_use_subcommand -a check -d 'say whether recordings are sound'
complete -c penwick -n __fish_use_subcommand -a packets -d 'list the packets of a recording'
complete -c penwick -n __fish_use_subcommand -a sheet -d 'make a contact sheet'
complete -c penwick -n __fish_use_subcommand -a view -d 'show drawings in the browser'
complete -c penwick -n __fish_use_subcommand -l version -d 'show the version'
complete -c penwick -n '__fish_seen_subcommand_from open ink convert rescue info check packets sheet view' -a '(__penwick_recordings)'
complete -c penwick -s h -l help -d 'show help'
complete -c penwick -n '__fish_seen_subcommand_from open ink convert rescue sheet' -s o -l output -r -F -d 'where the result goes'
complete -c penwick -n '__fish_seen_subcommand_from open ink convert rescue info check packets sheet view' -l as -x -a 'pen inkml inkml-subset' -d 'read FILE as'
complete -c penwick -n '__fish_seen_subcommand_from open convert info check sheet view' -l translate -d 'translate ink documents in any case'
complete -c penwick -n '__fish_seen_subcommand_from open convert info check sheet view' -l unit -x -d 'millimetres for each unit without one'
complete -c penwick -n '__fish_seen_subcommand_from convert' -l exact -d 'keep the tenths of coordinates'
complete -c penwick -n '__fish_seen_subcommand_from open convert rescue' -l out-dir -x -a '(__fish_complete_directories)' -d 'folder for results'
complete -c penwick -n '__fish_seen_subcommand_from open ink convert rescue sheet' -l force -d 'overwrite results'
complete -c penwick -n '__fish_seen_subcommand_from open convert rescue' -l on-conflict -x -a 'keep replace number' -d 'what to do where results exist'
complete -c penwick -n '__fish_seen_subcommand_from open convert rescue info check sheet view' -s j -l jobs -x -d 'how many files at a time'
complete -c penwick -n '__fish_seen_subcommand_from open convert rescue info check sheet view' -l time-limit -x -d 'processor time for each file'
complete -c penwick -n '__fish_seen_subcommand_from open ink convert rescue check sheet view' -s q -l quiet -d 'print only errors'
complete -c penwick -n '__fish_seen_subcommand_from open' -l format -x -a 'svg pdf png html json' -d 'format'
complete -c penwick -n '__fish_seen_subcommand_from open' -l style -x -a 'outline centerline' -d 'outlines or lines'
complete -c penwick -n '__fish_seen_subcommand_from open view' -l pressure -x -d 'pressure where there is none'
complete -c penwick -n '__fish_seen_subcommand_from open' -l background -x -a 'white black' -d 'colour behind'
complete -c penwick -n '__fish_seen_subcommand_from open' -l dpi -x -d 'pixels per inch'
complete -c penwick -n '__fish_seen_subcommand_from open' -l size -x -d 'largest size in pixels'
complete -c penwick -n '__fish_seen_subcommand_from open' -l journal -r -F -d 'write every call'
complete -c penwick -n '__fish_seen_subcommand_from open' -l no-built-in-library -d 'your own library only'
complete -c penwick -n '__fish_seen_subcommand_from open' -l module -r -F -d 'plug-in module to run'
complete -c penwick -n '__fish_seen_subcommand_from open' -l log-dir -x -a '(__fish_complete_directories)' -d 'folder for the log'
complete -c penwick -n '__fish_seen_subcommand_from open' -s v -l verbose -d 'show what was printed and skipped'
complete -c penwick -n '__fish_seen_subcommand_from open ink convert view' -l rescue -d 'read what can be saved'
complete -c penwick -n '__fish_seen_subcommand_from view' -l messages-in-pages -d 'show warnings and errors as pages, too'
complete -c penwick -n '__fish_seen_subcommand_from rescue info' -l json -d 'a line of JSON for each file'
complete -c penwick -n '__fish_seen_subcommand_from rescue' -l thorough -d 'mend what looks damaged, too'
complete -c penwick -n '__fish_seen_subcommand_from packets' -l json -d 'a line of JSON for each packet'
complete -c penwick -n '__fish_seen_subcommand_from sheet' -l title -x -d 'heading'
