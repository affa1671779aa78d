# fish completion for hxmidi, made by scripts/options

# Whether the words so far name one of these commands.
function __hxmidi_at
    set -l at
    for word in (commandline -opc)[2..-1]
        if contains -- (string join ' ' $at $word) 'parse' 'build' 'match' 'diff' 'dump' 'split' 'fields' 'sum' 'hash' 'convert'
            set -a at $word
        end
    end
    contains -- "$at" $argv
end

function __hxmidi_files
    for found in (__fish_complete_path (string sub -s 2 -- (commandline -ct)))
        echo @$found
    end
end

complete -c hxmidi -n "__hxmidi_at ''" -f
complete -c hxmidi -n "__hxmidi_at ''" -a parse -d 'Show the bytes of the data, and what its SysEx messages are'
complete -c hxmidi -n "__hxmidi_at ''" -a build -d 'Build a message from a format and its arguments'
complete -c hxmidi -n "__hxmidi_at ''" -a match -d 'Look for a pattern; exit with 1 when it does not fit'
complete -c hxmidi -n "__hxmidi_at ''" -a diff -d 'List the bytes in which two buffers differ'
complete -c hxmidi -n "__hxmidi_at ''" -a dump -d 'Show the bytes as a table with offsets'
complete -c hxmidi -n "__hxmidi_at ''" -a split -d 'Cut data into its messages, or into equal pieces'
complete -c hxmidi -n "__hxmidi_at ''" -a fields -d 'Read typed values at positions of a message'
complete -c hxmidi -n "__hxmidi_at ''" -a sum -d 'Print a checksum of a section in hexadecimal'
complete -c hxmidi -n "__hxmidi_at ''" -a hash -d 'Print the 64-bit content hash of the bytes in hexadecimal'
complete -c hxmidi -n "__hxmidi_at ''" -a convert -d 'Write the bytes in another form'
complete -c hxmidi -n "__hxmidi_at 'parse'" -f
complete -c hxmidi -n "__hxmidi_at 'parse'; and string match -q '@*' -- (commandline -ct)" -a '(__hxmidi_files)'
complete -c hxmidi -n "__hxmidi_at 'build'" -f
complete -c hxmidi -n "__hxmidi_at 'match'" -f
complete -c hxmidi -n "__hxmidi_at 'match'; and string match -q '@*' -- (commandline -ct)" -a '(__hxmidi_files)'
complete -c hxmidi -n "__hxmidi_at 'diff'" -f
complete -c hxmidi -n "__hxmidi_at 'diff'; and string match -q '@*' -- (commandline -ct)" -a '(__hxmidi_files)'
complete -c hxmidi -n "__hxmidi_at 'dump'" -f
complete -c hxmidi -n "__hxmidi_at 'dump'; and string match -q '@*' -- (commandline -ct)" -a '(__hxmidi_files)'
complete -c hxmidi -n "__hxmidi_at 'split'" -f
complete -c hxmidi -n "__hxmidi_at 'split'; and string match -q '@*' -- (commandline -ct)" -a '(__hxmidi_files)'
complete -c hxmidi -n "__hxmidi_at 'fields'" -f
complete -c hxmidi -n "__hxmidi_at 'fields'" -a '14bit@ utime@ 32bit@ 32bitle@ float32@ int1@ int2@ int3@ int4@ string@ ascii@'
complete -c hxmidi -n "__hxmidi_at 'fields'; and string match -q '@*' -- (commandline -ct)" -a '(__hxmidi_files)'
complete -c hxmidi -n "__hxmidi_at 'sum'" -f
complete -c hxmidi -n "__hxmidi_at 'sum'; and string match -q '@*' -- (commandline -ct)" -a '(__hxmidi_files)'
complete -c hxmidi -n "__hxmidi_at 'hash'" -f
complete -c hxmidi -n "__hxmidi_at 'hash'; and string match -q '@*' -- (commandline -ct)" -a '(__hxmidi_files)'
complete -c hxmidi -n "__hxmidi_at 'convert'" -f
complete -c hxmidi -n "__hxmidi_at 'convert'; and string match -q '@*' -- (commandline -ct)" -a '(__hxmidi_files)'
complete -c hxmidi -n "__hxmidi_at '' 'parse' 'build' 'match' 'diff' 'dump' 'split' 'fields' 'sum' 'hash' 'convert'" -s h -l help -d 'Print this help message and exit'
complete -c hxmidi -n "__hxmidi_at ''" -l version -d 'Display program version information and exit'
complete -c hxmidi -n "__hxmidi_at 'parse' 'build' 'match' 'diff' 'dump' 'split' 'fields' 'sum' 'hash' 'convert'" -l strict -d 'Take warnings as errors'
complete -c hxmidi -n "__hxmidi_at 'parse' 'build' 'match' 'diff' 'split' 'fields' 'sum' 'hash'" -l json -d 'Print exactly one JSON document, errors included'
complete -c hxmidi -n "__hxmidi_at 'parse' 'match' 'diff' 'dump' 'split' 'fields' 'sum' 'hash' 'convert'" -l from -x -a 'auto c decimal hex raw' -d 'How the data is written'
complete -c hxmidi -n "__hxmidi_at 'parse' 'match' 'diff' 'dump' 'split' 'fields' 'sum' 'hash' 'convert'" -l raw -d 'The same as --from raw'
complete -c hxmidi -n "__hxmidi_at 'parse' 'match' 'diff' 'dump' 'split' 'fields' 'sum' 'hash' 'convert'" -l tokens -d 'Split hex text at blanks, as setText'
complete -c hxmidi -n "__hxmidi_at 'parse' 'match' 'diff' 'dump' 'split' 'fields' 'sum' 'hash' 'convert'" -l lenient -d 'Leave bad pieces of hex text out, as HxMidiData does, with a warning'
complete -c hxmidi -n "__hxmidi_at 'build'" -l lenient -d 'Ignore what HxMidiData ignores, with a warning'
complete -c hxmidi -n "__hxmidi_at 'match'" -s s -l start -d 'The pattern must fit from the first byte on'
complete -c hxmidi -n "__hxmidi_at 'match'" -s e -l each -d 'Match each message by itself and print those that fit'
complete -c hxmidi -n "__hxmidi_at 'match'" -s q -l quiet -d 'Print nothing but errors and warnings'
complete -c hxmidi -n "__hxmidi_at 'diff'" -l offset -x -d 'Index of the first byte to compare'
complete -c hxmidi -n "__hxmidi_at 'diff'" -l count -x -d 'Compare N bytes'
complete -c hxmidi -n "__hxmidi_at 'diff'" -l tolerant -d 'Compare as the devices data, within its tolerances'
complete -c hxmidi -n "__hxmidi_at 'dump'" -l columns -x -d 'Bytes to a row'
complete -c hxmidi -n "__hxmidi_at 'dump'" -l length -x -d 'Show only the first N bytes'
complete -c hxmidi -n "__hxmidi_at 'split'" -l size -x -d 'Cut into pieces of N bytes, of which the last may be shorter'
complete -c hxmidi -n "__hxmidi_at 'split'" -l status -d 'Cut before a status byte, and after an F7 that ends a piece'
complete -c hxmidi -n "__hxmidi_at 'fields'" -l fallback -x -d 'Value of number fields that are outside the data'
complete -c hxmidi -n "__hxmidi_at 'sum'" -l kind -x -a '32bit 7bit complement' -d '7bit'
complete -c hxmidi -n "__hxmidi_at 'sum'" -l start -x -d 'Index of the sections first byte'
complete -c hxmidi -n "__hxmidi_at 'sum'" -l end -x -d 'Index after its last byte'
complete -c hxmidi -n "__hxmidi_at 'convert'" -l to -x -a 'c compact decimal hex raw' -d 'hex'
