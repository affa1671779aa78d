# fish completion for hxmidi

set -l commands parse build match diff dump split fields sum hash convert
set -l readers parse match diff dump split fields sum hash convert
set -l json parse build match diff split fields sum hash

function __hxmidi_files
    for name in (__fish_complete_path (string sub -s 2 -- (commandline -ct)))
        echo @$name
    end
end

complete -c hxmidi -f
complete -c hxmidi -n "not __fish_seen_subcommand_from $commands" -l version -d 'Print the version'
complete -c hxmidi -s h -l help -d 'Print the options'

complete -c hxmidi -n __fish_use_subcommand -a parse -d 'Show the bytes that a text denotes'
complete -c hxmidi -n __fish_use_subcommand -a build -d 'Build a message from a format'
complete -c hxmidi -n __fish_use_subcommand -a match -d 'Look for a pattern'
complete -c hxmidi -n __fish_use_subcommand -a diff -d 'List the bytes in which two buffers differ'
complete -c hxmidi -n __fish_use_subcommand -a dump -d 'Show the bytes as a table'
complete -c hxmidi -n __fish_use_subcommand -a split -d 'Cut data into messages or equal pieces'
complete -c hxmidi -n __fish_use_subcommand -a fields -d 'Read typed values'
complete -c hxmidi -n __fish_use_subcommand -a sum -d 'Print a checksum'
complete -c hxmidi -n __fish_use_subcommand -a hash -d 'Print the content hash'
complete -c hxmidi -n __fish_use_subcommand -a convert -d 'Write the bytes in another form'

complete -c hxmidi -n "__fish_seen_subcommand_from $commands" -l strict -d 'Take warnings as errors'
complete -c hxmidi -n "__fish_seen_subcommand_from $json" -l json -d 'Print one JSON document'
complete -c hxmidi -n "__fish_seen_subcommand_from $commands" -l lenient -d 'Leave bad pieces out'
complete -c hxmidi -n "__fish_seen_subcommand_from $readers" -l from -x -a 'auto raw hex decimal c' -d 'How the data is written'
complete -c hxmidi -n "__fish_seen_subcommand_from $readers" -l raw -d 'The data is raw bytes'
complete -c hxmidi -n "__fish_seen_subcommand_from $readers" -l tokens -d 'Split hex text at blanks'
complete -c hxmidi -n "__fish_seen_subcommand_from $readers; and string match -q '@*' -- (commandline -ct)" -a '(__hxmidi_files)'

complete -c hxmidi -n '__fish_seen_subcommand_from match' -s s -l start -d 'Fit from the first byte on'
complete -c hxmidi -n '__fish_seen_subcommand_from match' -s e -l each -d 'Each message by itself'
complete -c hxmidi -n '__fish_seen_subcommand_from match' -s q -l quiet -d 'Print nothing but errors and warnings'
complete -c hxmidi -n '__fish_seen_subcommand_from diff' -l offset -x -d 'Index of the first byte'
complete -c hxmidi -n '__fish_seen_subcommand_from diff' -l count -x -d 'Compare so many bytes'
complete -c hxmidi -n '__fish_seen_subcommand_from diff' -l tolerant -d 'Exit with 0 within tolerances'
complete -c hxmidi -n '__fish_seen_subcommand_from dump' -l columns -x -d 'Bytes to a row'
complete -c hxmidi -n '__fish_seen_subcommand_from dump' -l length -x -d 'Only the first bytes'
complete -c hxmidi -n '__fish_seen_subcommand_from split' -l size -x -d 'Cut into equal pieces'
complete -c hxmidi -n '__fish_seen_subcommand_from split' -l status -d 'Cut into messages'
complete -c hxmidi -n '__fish_seen_subcommand_from fields' -l fallback -x -d 'Value outside of the data'
complete -c hxmidi -n '__fish_seen_subcommand_from fields' -a '14bit@ utime@ float32@ 32bit@ 32bitle@ int1@ int2@ int3@ int4@ string@ ascii@'
complete -c hxmidi -n '__fish_seen_subcommand_from sum' -l kind -x -a '7bit complement 32bit' -d 'Which sum'
complete -c hxmidi -n '__fish_seen_subcommand_from sum' -l start -x -d 'Index of the first byte'
complete -c hxmidi -n '__fish_seen_subcommand_from sum' -l end -x -d 'Index behind the last byte'
complete -c hxmidi -n '__fish_seen_subcommand_from convert' -l to -x -a 'hex compact raw decimal c' -d 'Form to write'
