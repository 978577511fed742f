# Completion of quor-gjf for fish: commands, options, job files, and the words of a route.

set -l commands report check outline route complete edit format split join schema

# The route before the cursor, and what completes it, with what stands before its last separator kept.
function __quor_gjf_route
    set -l text (commandline -ct | string replace -a -r '[\'"\\\\]' '')
    set -l words (commandline -opc)
    set -l kept (string replace -r '[^=(,/: ]*$' '' -- $text)
    for word in (quor-gjf complete -- (string join ' ' -- $words[3..-1] $text) 2>/dev/null)
        echo "$kept$word"
    end
end

complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -f
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -a report -d 'Print what is in job files'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -a check -d 'Find what would make jobs fail'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -a outline -d 'Tell which lines hold what'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -a route -d 'Explain a route'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -a complete -d 'Complete the last word of a route'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -a edit -d 'Change job files'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -a format -d 'Write job files anew'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -a split -d 'Write each job to a file of its own'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -a join -d 'Join job files to one'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -a schema -d 'Examine the route vocabulary'
complete -c quor-gjf -s h -l help -d 'Print help'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -l version -d 'Print the version'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -l config -r -F -d 'Read options from a file'
complete -c quor-gjf -n '__fish_seen_subcommand_from report check outline route complete schema' -l json -d 'Print JSON'
complete -c quor-gjf -n '__fish_seen_subcommand_from report check outline edit' -s j -l jobs -x -d 'Files at once'
complete -c quor-gjf -n '__fish_seen_subcommand_from check' -l ignore -x -a '(quor-gjf check --list | string replace "  " \t)' -d 'Do not report a code'
complete -c quor-gjf -n '__fish_seen_subcommand_from check' -l fail-on -x -a 'error warning note' -d 'Exit with 1 from this severity on'
complete -c quor-gjf -n '__fish_seen_subcommand_from check' -l list -d 'List all codes'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit format split join' -s o -l output -r -F -d 'Write to here'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit format split join' -l force -d 'Replace what is there'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit format' -l in-place -d 'Replace each file'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l set -x -a 'mem= nprocshared= chk= oldchk= rwf= cpu=' -d 'Set a Link 0 value'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l unset -x -a 'mem nprocshared chk oldchk rwf cpu' -d 'Take out a Link 0 line'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l chk-from-name -d 'Name the checkpoint after the file'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l title -x -d 'Set the title'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l charge -x -d 'Set the charge'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l multiplicity -x -d 'Set the multiplicity'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l method -x -d 'Set the method'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l basis -x -d 'Set the basis set'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l add-keyword -x -d 'Add a keyword'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l remove-keyword -x -d 'Take out a keyword'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l option -x -d 'Give a keyword an option'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l freeze -x -d 'Set freeze codes'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l layer -x -d 'Set ONIOM layers'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l fragment -x -d 'Set fragments'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l translate -x -d 'Shift atoms'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l remove-atoms -x -d 'Remove atoms'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l section -r -d 'Set an extra input section'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l remove-section -x -a '(quor-gjf edit --list-kinds | awk "{print \$2}")' -d 'Take out a section'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l list-kinds -d 'List the kinds of sections'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l job -x -d 'Change this job alone'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l diff -d 'Show the changes'
complete -c quor-gjf -n '__fish_seen_subcommand_from edit' -l dry-run -d 'Write nothing'
complete -c quor-gjf -n '__fish_seen_subcommand_from format' -l drop-comments -d 'Write without comments'
complete -c quor-gjf -n '__fish_seen_subcommand_from route complete' -f -a '(__quor_gjf_route)'
complete -c quor-gjf -n '__fish_seen_subcommand_from schema; and not __fish_seen_subcommand_from validate show where' -f -a 'validate show where'
