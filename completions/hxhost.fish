# fish completion for hxhost, made by scripts/options

# Whether the words so far name one of these commands.
function __hxhost_at
    set -l at
    for word in (commandline -opc)[2..-1]
        if contains -- (string join ' ' $at $word) 'ports' 'identify' 'info' 'update' 'batch' 'verify' 'recover' 'image' 'image build' 'image inspect' 'image sign' 'image verify' 'inspect' 'check' 'monitor' 'trace' 'simulate' 'support'
            set -a at $word
        end
    end
    contains -- "$at" $argv
end

function __hxhost_files
    for found in (__fish_complete_path (string sub -s 2 -- (commandline -ct)))
        echo @$found
    end
end

complete -c hxhost -n "__hxhost_at ''" -f
complete -c hxhost -n "__hxhost_at ''" -a ports -d 'List MIDI ports and mark those that fit the product'
complete -c hxhost -n "__hxhost_at ''" -a identify -d 'Ask the product on a port for its identity'
complete -c hxhost -n "__hxhost_at ''" -a info -d 'Read all that the product reports of itself'
complete -c hxhost -n "__hxhost_at ''" -a update -d 'Update the product with an image, and check the result'
complete -c hxhost -n "__hxhost_at ''" -a batch -d 'Update every product that answers, all at the same time'
complete -c hxhost -n "__hxhost_at ''" -a verify -d 'Check that the code in the product is intact'
complete -c hxhost -n "__hxhost_at ''" -a recover -d 'Report the state of the product, and how to recover it'
complete -c hxhost -n "__hxhost_at ''" -a image -d 'Make, inspect, sign and verify update images'
complete -c hxhost -n "__hxhost_at ''" -a inspect -d 'Load the plugin and show its metadata, names and dictionary'
complete -c hxhost -n "__hxhost_at ''" -a check -d 'Check that a plugin keeps the contract with its hosts, rule by rule'
complete -c hxhost -n "__hxhost_at ''" -a monitor -d 'Print what arrives on a port, decoded'
complete -c hxhost -n "__hxhost_at ''" -a trace -d 'Show a recorded session as a table and in numbers, or draw it'
complete -c hxhost -n "__hxhost_at ''" -a simulate -d 'Put a simulated product on a virtual MIDI port until Ctrl-C'
complete -c hxhost -n "__hxhost_at ''" -a support -d 'Write a report to send with a call for help'
complete -c hxhost -n "__hxhost_at 'ports'" -f
complete -c hxhost -n "__hxhost_at 'identify'" -f
complete -c hxhost -n "__hxhost_at 'info'" -f
complete -c hxhost -n "__hxhost_at 'recover'" -f
complete -c hxhost -n "__hxhost_at 'image'" -f
complete -c hxhost -n "__hxhost_at 'image'" -a build -d 'Make an update image from a code file'
complete -c hxhost -n "__hxhost_at 'image'" -a inspect -d 'Show what an update image holds, and what is wrong with it'
complete -c hxhost -n "__hxhost_at 'image'" -a sign -d 'Sign an update image: write its signature beside it'
complete -c hxhost -n "__hxhost_at 'image'" -a verify -d 'Check that an update image is signed with a trusted key'
complete -c hxhost -n "__hxhost_at 'inspect'" -f
complete -c hxhost -n "__hxhost_at 'monitor'" -f
complete -c hxhost -n "__hxhost_at 'support'" -f
complete -c hxhost -n "__hxhost_at '' 'ports' 'identify' 'info' 'update' 'batch' 'verify' 'recover' 'image' 'image build' 'image inspect' 'image sign' 'image verify' 'inspect' 'check' 'monitor' 'trace' 'simulate' 'support'" -s h -l help -d 'Print this help message and exit'
complete -c hxhost -n "__hxhost_at ''" -l version -d 'Display program version information and exit'
complete -c hxhost -n "__hxhost_at 'ports'" -l probe -d 'Ask on each output which product is there'
complete -c hxhost -n "__hxhost_at 'ports' 'identify' 'info' 'update' 'batch' 'verify' 'recover' 'image build' 'image inspect' 'image sign' 'image verify' 'inspect' 'check' 'monitor' 'trace' 'simulate' 'support'" -l json -d 'Print exactly one JSON document, errors included'
complete -c hxhost -n "__hxhost_at 'ports' 'identify' 'info' 'update' 'batch' 'verify' 'recover' 'image build' 'image inspect' 'image sign' 'image verify' 'inspect' 'check' 'monitor' 'trace' 'simulate' 'support'" -l field -x -d 'Print only this value of the result'
complete -c hxhost -n "__hxhost_at 'ports' 'identify' 'info' 'update' 'batch' 'verify' 'recover' 'image build' 'image inspect' 'image sign' 'image verify' 'inspect' 'check' 'monitor' 'trace' 'simulate' 'support'" -l progress -x -a 'auto bar json none plain' -d 'How progress is shown on stderr'
complete -c hxhost -n "__hxhost_at 'ports' 'identify' 'info' 'update' 'batch' 'verify' 'recover' 'image build' 'image inspect' 'image sign' 'image verify' 'inspect' 'check' 'monitor' 'trace' 'simulate' 'support'" -s q -l quiet -d 'Say nothing on stderr but errors'
complete -c hxhost -n "__hxhost_at 'ports' 'identify' 'info' 'update' 'batch' 'verify' 'recover' 'image build' 'image inspect' 'image sign' 'image verify' 'inspect' 'check' 'monitor' 'trace' 'simulate' 'support'" -s v -l verbose -d 'Say what is decided and what the plugin logs'
complete -c hxhost -n "__hxhost_at 'ports' 'identify' 'info' 'update' 'batch' 'verify' 'recover' 'image build' 'image inspect' 'image sign' 'image verify' 'inspect' 'check' 'monitor' 'trace' 'simulate' 'support'" -l trace -r -F -d 'Write a record of the session'
complete -c hxhost -n "__hxhost_at 'ports' 'identify' 'info' 'update' 'batch' 'verify' 'recover' 'image build' 'image inspect' 'image sign' 'image verify' 'inspect' 'monitor' 'simulate' 'support'" -l plugin -r -F -d 'The device plugin, or the folder that holds it'
complete -c hxhost -n "__hxhost_at 'identify' 'info' 'update' 'verify' 'recover' 'support'" -l port -x -a 'simulator simulator: replay: device:' -d 'MIDI port'
complete -c hxhost -n "__hxhost_at 'identify' 'info' 'update' 'verify' 'recover' 'support'" -l in-port -x -a 'simulator simulator: replay: device:' -d 'The port that answers come from'
complete -c hxhost -n "__hxhost_at 'identify' 'info' 'update' 'batch' 'verify' 'recover' 'support'" -l rate -x -d 'Bytes a second to send'
complete -c hxhost -n "__hxhost_at 'identify' 'info' 'update' 'batch' 'verify' 'recover' 'simulate' 'support'" -l gap -x -d 'Pause after each message, in milliseconds'
complete -c hxhost -n "__hxhost_at 'identify' 'info' 'update' 'batch' 'verify' 'recover' 'support'" -l slow-host -d 'Wait four times as long, and rest before asking again'
complete -c hxhost -n "__hxhost_at 'identify' 'info' 'update' 'verify' 'recover' 'monitor' 'simulate' 'support'" -l fault -x -a 'silent duplicate-message damage-message cut-message insert-message refuse wrong-model vanish bad-ack failed-ack power-cut bad-write drop-reply duplicate-reply damage-reply cut-reply insert-reply delay-reply late-reply swap-reply noise' -d 'Make the simulated product misbehave'
complete -c hxhost -n "__hxhost_at 'identify' 'info' 'update' 'verify' 'recover' 'monitor' 'simulate' 'support'" -l serial -x -d 'Serial number of a new simulated product'
complete -c hxhost -n "__hxhost_at 'identify' 'info' 'update' 'verify' 'recover' 'support'" -l stop-at-eof -d 'Stop, as at Ctrl-C, when standard input ends'
complete -c hxhost -n "__hxhost_at 'update'" -l dry-run -d 'Show what would be sent'
complete -c hxhost -n "__hxhost_at 'update'" -s y -l yes -d 'Do not ask on a terminal before it starts'
complete -c hxhost -n "__hxhost_at 'update'" -l no-listen -d 'Do not listen for other traffic for a second before it starts'
complete -c hxhost -n "__hxhost_at 'update' 'batch' 'image verify'" -l pubkey -r -F -d 'File of public keys'
complete -c hxhost -n "__hxhost_at 'update' 'batch' 'image verify'" -l signature -r -F -d 'Signature of the image'
complete -c hxhost -n "__hxhost_at 'update' 'batch'" -l unsigned -d 'Send the image without checking its signature'
complete -c hxhost -n "__hxhost_at 'batch'" -l ports -x -d 'Ports to look on'
complete -c hxhost -n "__hxhost_at 'batch'" -l jobs -x -d 'How many products are updated at the same time'
complete -c hxhost -n "__hxhost_at 'batch'" -l watch -d 'Wait for the next product after each, until Ctrl-C'
complete -c hxhost -n "__hxhost_at 'batch'" -l skip-silent -d 'Leave out ports where nothing answers'
complete -c hxhost -n "__hxhost_at 'batch'" -l no-listen -d 'Do not listen for other traffic for a second before an update'
complete -c hxhost -n "__hxhost_at 'batch'" -l report -r -F -d 'Write what became of each unit'
complete -c hxhost -n "__hxhost_at 'batch'" -l traces -x -d 'Folder for the image and the trace of each unit'
complete -c hxhost -n "__hxhost_at 'image build'" -s o -l output -r -F -d 'Image to write'
complete -c hxhost -n "__hxhost_at 'image build'" -l kind -x -a 'fwd fwu' -d 'Kind of code image, as its maker names it'
complete -c hxhost -n "__hxhost_at 'image build'" -l code-version -x -d 'Version that the code carries'
complete -c hxhost -n "__hxhost_at 'image sign'" -l key -r -F -d 'Secret key, as minisign -G makes it'
complete -c hxhost -n "__hxhost_at 'image sign'" -s o -l output -r -F -d 'Signature to write'
complete -c hxhost -n "__hxhost_at 'check'" -l image -r -F -d 'An update image of the product'
complete -c hxhost -n "__hxhost_at 'monitor'" -l count -x -d 'Stop after this many messages'
complete -c hxhost -n "__hxhost_at 'monitor' 'simulate'" -l seconds -x -d 'Stop after this time'
complete -c hxhost -n "__hxhost_at 'monitor'" -l port -x -a 'simulator simulator: replay: device:' -d 'Port that bytes come from'
complete -c hxhost -n "__hxhost_at 'trace'" -l svg -r -F -d 'Draw a picture instead of the table'
complete -c hxhost -n "__hxhost_at 'simulate'" -l device -d 'Make a device instead of a MIDI port'
complete -c hxhost -n "__hxhost_at 'simulate'" -l name -x -d 'Name of the port'
complete -c hxhost -n "__hxhost_at 'simulate'" -l backend -x -a 'alsa jack core' -d 'Kind of port'
complete -c hxhost -n "__hxhost_at 'simulate'" -l state -r -F -d 'File that keeps the products memory'
complete -c hxhost -n "__hxhost_at 'simulate'" -l rate -x -d 'Bytes a second to send'
complete -c hxhost -n "__hxhost_at 'support'" -s o -l output -r -F -d 'Report to write'
complete -c hxhost -n "__hxhost_at 'support'" -l image -r -F -d 'The image whose checksum the report states'
complete -c hxhost -n "__hxhost_at 'support'" -l last-trace -r -F -d 'The record that --trace wrote in the run that failed'
