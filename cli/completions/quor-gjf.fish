# Completion of quor-gjf for fish: commands, options, job files, and the words of a route.

set -l commands report check outline route complete format split join schema

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
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -a format -d 'Write job files anew'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -a split -d 'Write each job to a file of its own'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -a join -d 'Join job files to one'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -a schema -d 'Examine the route vocabulary'
complete -c quor-gjf -s h -l help -d 'Print help'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -l version -d 'Print the version'
complete -c quor-gjf -n "not __fish_seen_subcommand_from $commands" -l config -r -F -d 'Read options from a file'
complete -c quor-gjf -n '__fish_seen_subcommand_from report check outline route complete schema' -l json -d 'Print JSON'
complete -c quor-gjf -n '__fish_seen_subcommand_from report check outline' -s j -l jobs -x -d 'Files at once'
complete -c quor-gjf -n '__fish_seen_subcommand_from check' -l ignore -x -a '(quor-gjf check --list | string replace "  " \t)' -d 'Do not report a code'
complete -c quor-gjf -n '__fish_seen_subcommand_from check' -l fail-on -x -a 'error warning note' -d 'Exit with 1 from this severity on'
complete -c quor-gjf -n '__fish_seen_subcommand_from check' -l list -d 'List all codes'
complete -c quor-gjf -n '__fish_seen_subcommand_from format split join' -s o -l output -r -F -d 'Write to here'
complete -c quor-gjf -n '__fish_seen_subcommand_from format split join' -l force -d 'Replace what is there'
complete -c quor-gjf -n '__fish_seen_subcommand_from format' -l in-place -d 'Replace each file'
complete -c quor-gjf -n '__fish_seen_subcommand_from format' -l drop-comments -d 'Write without comments'
complete -c quor-gjf -n '__fish_seen_subcommand_from route complete' -f -a '(__quor_gjf_route)'
complete -c quor-gjf -n '__fish_seen_subcommand_from schema; and not __fish_seen_subcommand_from validate show where' -f -a 'validate show where'
