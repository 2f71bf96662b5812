# Completion of mordhost for fish. Generated from the option table: do not edit.

complete -c mordhost -f
complete -c mordhost -l help -d 'Show the arguments and options'
complete -c mordhost -l version -d 'Show the version'

complete -c mordhost -n __fish_use_subcommand -a replay -d 'Decide recorded connection events under a policy'
complete -c mordhost -n '__fish_seen_subcommand_from replay' -F
complete -c mordhost -n '__fish_seen_subcommand_from replay' -l format -x -a 'text json jsonl' -d 'Write the decisions as text, json or jsonl; default: text'
complete -c mordhost -n '__fish_seen_subcommand_from replay' -l no-duration -d 'Leave out all durations, so that the outputs of two runs can be compared'
complete -c mordhost -n '__fish_seen_subcommand_from replay' -l reports -r -F -d 'Write the library\'s reports to FILE'
complete -c mordhost -n '__fish_seen_subcommand_from replay' -l log -r -F -d 'Write the library\'s log records to FILE'
complete -c mordhost -n '__fish_seen_subcommand_from replay' -l no-log -d 'Disable the library\'s log records: faster, but without reasons'
complete -c mordhost -n '__fish_seen_subcommand_from replay' -l dots -r -F -d 'Keep the remaining dots in FILE, rewritten at each deletion'
complete -c mordhost -n '__fish_seen_subcommand_from replay' -l dots-down -x -a 'network-error query-error broken-answer' -d 'Make every query for dots fail with network-error, query-error or broken-answer'
complete -c mordhost -n '__fish_seen_subcommand_from replay' -l libraries -x -a '(__fish_complete_directories)' -d 'Load ZelkBase, Ferrocore and mordRev from DIR instead of the default directory'
complete -c mordhost -n '__fish_seen_subcommand_from replay' -l programs -x -a '(__fish_complete_directories)' -d 'Start the policy\'s programs from DIR instead of the directory of mordhost'

complete -c mordhost -n __fish_use_subcommand -a explain -d 'Show the full path of a decision: rules, ids, modes, and what would allow it'
complete -c mordhost -n '__fish_seen_subcommand_from explain' -F
complete -c mordhost -n '__fish_seen_subcommand_from explain' -l format -x -a 'text json jsonl' -d 'Write the explanations as text, json or jsonl; default: text'
complete -c mordhost -n '__fish_seen_subcommand_from explain' -l event -x -d 'Explain the events of this name, or the one in this line; default: all'
complete -c mordhost -n '__fish_seen_subcommand_from explain' -l from -x -d 'Explain one event with this remote end; needs --to, and takes no EVENTS'
complete -c mordhost -n '__fish_seen_subcommand_from explain' -l to -x -d 'The local end of the event of --from'
complete -c mordhost -n '__fish_seen_subcommand_from explain' -l pid -x -d 'The process id of the event of --from'
complete -c mordhost -n '__fish_seen_subcommand_from explain' -l flags -x -d 'The flags of the event of --from; 0x10 asks for the reply allow (flagged)'
complete -c mordhost -n '__fish_seen_subcommand_from explain' -l records -d 'Add the library\'s log records'
complete -c mordhost -n '__fish_seen_subcommand_from explain' -l no-duration -d 'Leave out all durations, so that the outputs of two runs can be compared'
complete -c mordhost -n '__fish_seen_subcommand_from explain' -l dots-down -x -a 'network-error query-error broken-answer' -d 'Make every query for dots fail with network-error, query-error or broken-answer'
complete -c mordhost -n '__fish_seen_subcommand_from explain' -l libraries -x -a '(__fish_complete_directories)' -d 'Load ZelkBase, Ferrocore and mordRev from DIR instead of the default directory'

complete -c mordhost -n __fish_use_subcommand -a diff -d 'Compare the decisions of two policies on recorded events'
complete -c mordhost -n '__fish_seen_subcommand_from diff' -F
complete -c mordhost -n '__fish_seen_subcommand_from diff' -l format -x -a 'text json jsonl' -d 'Write the differences as text, json or jsonl; default: text'
complete -c mordhost -n '__fish_seen_subcommand_from diff' -l programs -x -a '(__fish_complete_directories)' -d 'Start the policies\' programs from DIR instead of the directory of mordhost'
complete -c mordhost -n '__fish_seen_subcommand_from diff' -l libraries -x -a '(__fish_complete_directories)' -d 'Load ZelkBase, Ferrocore and mordRev from DIR instead of the default directory'

complete -c mordhost -n __fish_use_subcommand -a rehearse -d 'Decide recorded events under every failure and every mode'
complete -c mordhost -n '__fish_seen_subcommand_from rehearse' -F
complete -c mordhost -n '__fish_seen_subcommand_from rehearse' -l format -x -a 'text json jsonl' -d 'Write the events as text, json or jsonl; default: text'
complete -c mordhost -n '__fish_seen_subcommand_from rehearse' -l summary -d 'Write the summary without the events'
complete -c mordhost -n '__fish_seen_subcommand_from rehearse' -l programs -x -a '(__fish_complete_directories)' -d 'Start the policy\'s programs from DIR instead of the directory of mordhost'
complete -c mordhost -n '__fish_seen_subcommand_from rehearse' -l libraries -x -a '(__fish_complete_directories)' -d 'Load ZelkBase, Ferrocore and mordRev from DIR instead of the default directory'

complete -c mordhost -n __fish_use_subcommand -a check -d 'Find the faults of a policy or of a document for the library'
complete -c mordhost -n '__fish_seen_subcommand_from check' -F
complete -c mordhost -n '__fish_seen_subcommand_from check' -l format -x -a 'text json jsonl junit tap sarif github' -d 'Write the findings as text, json, jsonl, junit, tap, sarif or github; default: text'
complete -c mordhost -n '__fish_seen_subcommand_from check' -l strict -d 'Exit with code 1 if there are warnings'
complete -c mordhost -n '__fish_seen_subcommand_from check' -l allow-list -r -F -d 'Check the allow list in FILE; may be repeated'
complete -c mordhost -n '__fish_seen_subcommand_from check' -l action-table -r -F -d 'Check the action table in FILE; may be repeated'
complete -c mordhost -n '__fish_seen_subcommand_from check' -l answer -r -F -d 'Check the query result in FILE; may be repeated'
complete -c mordhost -n '__fish_seen_subcommand_from check' -l report -r -F -d 'Check the handling report in FILE; may be repeated'
complete -c mordhost -n '__fish_seen_subcommand_from check' -l libraries -x -a '(__fish_complete_directories)' -d 'Load ZelkBase, Ferrocore and mordRev from DIR instead of the default directory'

complete -c mordhost -n __fish_use_subcommand -a unused -d 'List the parts of a policy that a recording never used'
complete -c mordhost -n '__fish_seen_subcommand_from unused' -F
complete -c mordhost -n '__fish_seen_subcommand_from unused' -l format -x -a 'text json jsonl' -d 'Write the parts as text, json or jsonl; default: text'
complete -c mordhost -n '__fish_seen_subcommand_from unused' -l all -d 'List the used parts too, with the number of events that used them'
complete -c mordhost -n '__fish_seen_subcommand_from unused' -l strict -d 'Exit with code 1 if a part is unused'
complete -c mordhost -n '__fish_seen_subcommand_from unused' -l libraries -x -a '(__fish_complete_directories)' -d 'Load ZelkBase, Ferrocore and mordRev from DIR instead of the default directory'

complete -c mordhost -n __fish_use_subcommand -a suggest -d 'Suggest the allow-list entries that a recording needs'
complete -c mordhost -n '__fish_seen_subcommand_from suggest' -F
complete -c mordhost -n '__fish_seen_subcommand_from suggest' -l policy -r -F -d 'Suggest the entries that this policy lacks'
complete -c mordhost -n '__fish_seen_subcommand_from suggest' -l format -x -a 'text json jsonl' -d 'Write the entries as text, json or jsonl; default: text'
complete -c mordhost -n '__fish_seen_subcommand_from suggest' -l most -x -d 'Name at most N events per entry; default: 3'
complete -c mordhost -n '__fish_seen_subcommand_from suggest' -l libraries -x -a '(__fish_complete_directories)' -d 'Load ZelkBase, Ferrocore and mordRev from DIR instead of the default directory'

complete -c mordhost -n __fish_use_subcommand -a record -d 'Write this machine\'s inbound connections as events'
complete -c mordhost -n '__fish_seen_subcommand_from record' -l format -x -a 'text json jsonl' -d 'Write the events as text, json or jsonl; default: jsonl'
complete -c mordhost -n '__fish_seen_subcommand_from record' -l out -r -F -d 'Write to FILE instead of the standard output'
complete -c mordhost -n '__fish_seen_subcommand_from record' -l seconds -x -d 'Stop after N seconds instead of at an interruption'
complete -c mordhost -n '__fish_seen_subcommand_from record' -l flagged -x -d 'Set the flag 0x10 in events whose remote end is in RANGE; may be repeated'

complete -c mordhost -n __fish_use_subcommand -a watch -d 'Decide this machine\'s inbound connections as they come; enforces nothing'
complete -c mordhost -n '__fish_seen_subcommand_from watch' -F
complete -c mordhost -n '__fish_seen_subcommand_from watch' -l format -x -a 'text json jsonl' -d 'Write the decisions as text, json or jsonl; default: text'
complete -c mordhost -n '__fish_seen_subcommand_from watch' -l no-duration -d 'Leave out all durations, so that the outputs of two runs can be compared'
complete -c mordhost -n '__fish_seen_subcommand_from watch' -l reports -r -F -d 'Write the library\'s reports to FILE'
complete -c mordhost -n '__fish_seen_subcommand_from watch' -l log -r -F -d 'Write the library\'s log records to FILE'
complete -c mordhost -n '__fish_seen_subcommand_from watch' -l no-log -d 'Disable the library\'s log records: faster, but without reasons'
complete -c mordhost -n '__fish_seen_subcommand_from watch' -l dots -r -F -d 'Keep the remaining dots in FILE, rewritten at each deletion'
complete -c mordhost -n '__fish_seen_subcommand_from watch' -l dots-down -x -a 'network-error query-error broken-answer' -d 'Make every query for dots fail with network-error, query-error or broken-answer'
complete -c mordhost -n '__fish_seen_subcommand_from watch' -l libraries -x -a '(__fish_complete_directories)' -d 'Load ZelkBase, Ferrocore and mordRev from DIR instead of the default directory'
complete -c mordhost -n '__fish_seen_subcommand_from watch' -l seconds -x -d 'Stop after N seconds instead of at an interruption'
complete -c mordhost -n '__fish_seen_subcommand_from watch' -l flagged -x -d 'Set the flag 0x10 in events whose remote end is in RANGE; may be repeated'
