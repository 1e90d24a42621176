# fish completion for ktz-jxctl

set -l commands ports show get set save load copy reset diff check watch

complete -c ktz-jxctl -f
complete -c ktz-jxctl -n "not __fish_seen_subcommand_from $commands" -a ports -d "Every MIDI port, and the pair used"
complete -c ktz-jxctl -n "not __fish_seen_subcommand_from $commands" -a show -d "A table of all settings"
complete -c ktz-jxctl -n "not __fish_seen_subcommand_from $commands" -a get -d "Single values, one a line"
complete -c ktz-jxctl -n "not __fish_seen_subcommand_from $commands" -a set -d "Change settings of the device"
complete -c ktz-jxctl -n "not __fish_seen_subcommand_from $commands" -a save -d "Write what the device holds to a file"
complete -c ktz-jxctl -n "not __fish_seen_subcommand_from $commands" -a load -d "Put a file's settings onto the device"
complete -c ktz-jxctl -n "not __fish_seen_subcommand_from $commands" -a copy -d "Put one knob's settings onto others"
complete -c ktz-jxctl -n "not __fish_seen_subcommand_from $commands" -a reset -d "Put the factory preset onto the device"
complete -c ktz-jxctl -n "not __fish_seen_subcommand_from $commands" -a diff -d "The settings that differ"
complete -c ktz-jxctl -n "not __fish_seen_subcommand_from $commands" -a check -d "What is wrong with settings files"
complete -c ktz-jxctl -n "not __fish_seen_subcommand_from $commands" -a watch -d "Every turn and change as it arrives"

complete -c ktz-jxctl -n "__fish_seen_subcommand_from show diff" -a "device factory"
complete -c ktz-jxctl -n "__fish_seen_subcommand_from show diff save load check" -a "(__fish_complete_suffix .CJX)"
complete -c ktz-jxctl -n "__fish_seen_subcommand_from copy reset" -a "(seq 8) all"
complete -c ktz-jxctl -n "__fish_seen_subcommand_from get" -a "{(seq 8),all}.{cc,channel,max,min,led}"
complete -c ktz-jxctl -n "__fish_seen_subcommand_from set" -a "{(seq 8),all}.{cc,channel,max,min,led}="
complete -c ktz-jxctl -n "__fish_seen_subcommand_from set" -a "{(seq 8),all}.led={ascent,descend,concave,convex}"

complete -c ktz-jxctl -l json -d "Print JSON"
complete -c ktz-jxctl -l port -x -a "(ktz-jxctl ports --quiet 2>/dev/null | cut -f 2 | sort -u)" -d "Use the port of this name"
complete -c ktz-jxctl -l wait -x -d "Wait so many seconds for a device"
complete -c ktz-jxctl -l force -d "Go on though another program has the device"
complete -c ktz-jxctl -l verbose -d "Tell every message"
complete -c ktz-jxctl -l verify -d "Ask the device afterwards what it holds"
complete -c ktz-jxctl -l no-verify -d "Do not ask"
complete -c ktz-jxctl -l dry-run -d "Print the messages and send none"
complete -c ktz-jxctl -l count -x -d "End after so many lines"
complete -c ktz-jxctl -l for -x -d "End after so many seconds"
complete -c ktz-jxctl -l quiet -d "Print nothing but what was asked for"
complete -c ktz-jxctl -s h -l help -d "Show a summary"
complete -c ktz-jxctl -l version -d "Show the version"
