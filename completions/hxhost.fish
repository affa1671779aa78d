# fish completion for hxhost

set -l commands ports identify info update verify recover image inspect check monitor trace simulate support
set -l leaves ports identify info update verify recover build inspect check monitor trace simulate support
set -l product identify info update verify recover support
set -l paced identify info update verify recover simulate support
set -l faulty identify info update verify recover monitor simulate support
set -l plugged identify info update verify recover build inspect monitor ports support
set -l build '__fish_seen_subcommand_from image; and __fish_seen_subcommand_from build'
set -l faults silent duplicate-message damage-message cut-message insert-message refuse wrong-model \
    vanish bad-ack failed-ack power-cut bad-write drop-reply duplicate-reply damage-reply cut-reply \
    insert-reply delay-reply late-reply swap-reply noise

complete -c hxhost -n "not __fish_seen_subcommand_from $commands" -f
complete -c hxhost -n "not __fish_seen_subcommand_from $commands" -l version -d 'Print the version'
complete -c hxhost -s h -l help -d 'Print the options'

complete -c hxhost -n __fish_use_subcommand -a ports -d 'List MIDI ports'
complete -c hxhost -n __fish_use_subcommand -a identify -d 'Ask the product who it is'
complete -c hxhost -n __fish_use_subcommand -a info -d 'Read all that the product tells of itself'
complete -c hxhost -n __fish_use_subcommand -a update -d 'Update the product with an image'
complete -c hxhost -n __fish_use_subcommand -a verify -d 'Check the code in the product'
complete -c hxhost -n __fish_use_subcommand -a recover -d 'Say what state the product is in'
complete -c hxhost -n __fish_use_subcommand -a image -d 'Make update images and look into them'
complete -c hxhost -n __fish_use_subcommand -a inspect -d 'Show what a plugin says of itself'
complete -c hxhost -n __fish_use_subcommand -a check -d 'Check that a plugin keeps the contract'
complete -c hxhost -n __fish_use_subcommand -a monitor -d 'Print what arrives on a port'
complete -c hxhost -n __fish_use_subcommand -a trace -d 'Show or draw a recorded session'
complete -c hxhost -n __fish_use_subcommand -a simulate -d 'Put a simulated product on a port'
complete -c hxhost -n __fish_use_subcommand -a support -d 'Write a report to attach to a call for help'
complete -c hxhost -n '__fish_seen_subcommand_from image; and not __fish_seen_subcommand_from build inspect' -f -a build -d 'Make an image'
complete -c hxhost -n '__fish_seen_subcommand_from image; and not __fish_seen_subcommand_from build inspect' -f -a inspect -d 'Look into an image'

complete -c hxhost -n "__fish_seen_subcommand_from $leaves" -l json -d 'Print one JSON document'
complete -c hxhost -n "__fish_seen_subcommand_from $leaves" -l field -x -d 'Print this value alone'
complete -c hxhost -n "__fish_seen_subcommand_from $leaves" -l progress -x -a 'auto bar plain json none' -d 'How progress is shown'
complete -c hxhost -n "__fish_seen_subcommand_from $leaves" -s q -l quiet -d 'Say nothing but errors'
complete -c hxhost -n "__fish_seen_subcommand_from $leaves" -s v -l verbose -d 'Say what is decided'
complete -c hxhost -n "__fish_seen_subcommand_from $leaves" -l trace -r -d 'Write a record'

complete -c hxhost -n "__fish_seen_subcommand_from $plugged" -l plugin -r -d 'The device plugin, or its folder'
complete -c hxhost -n "__fish_seen_subcommand_from $product monitor" -l port -r -a 'simulator replay:' -d 'MIDI port'
complete -c hxhost -n "__fish_seen_subcommand_from $product" -l in-port -x -d 'Port that answers come from'
complete -c hxhost -n "__fish_seen_subcommand_from $paced" -l rate -x -d 'Bytes a second to send'
complete -c hxhost -n "__fish_seen_subcommand_from $paced" -l gap -x -d 'Pause after each message, in ms'
complete -c hxhost -n "__fish_seen_subcommand_from $faulty" -l fault -x -a "$faults" -d 'Make the simulated product misbehave'

complete -c hxhost -n '__fish_seen_subcommand_from ports' -l probe -d 'Ask each output who it is'
complete -c hxhost -n '__fish_seen_subcommand_from update' -l dry-run -d 'Show the plan, send nothing'
complete -c hxhost -n '__fish_seen_subcommand_from update' -s y -l yes -d 'Do not ask'
complete -c hxhost -n '__fish_seen_subcommand_from update' -l no-listen -d 'Do not listen first'
complete -c hxhost -n $build -s o -l output -r -d 'Image to write'
complete -c hxhost -n $build -l kind -x -a 'fwu fwd' -d 'Kind of code image'
complete -c hxhost -n $build -l code-version -x -d 'Version that the code carries'
complete -c hxhost -n '__fish_seen_subcommand_from check' -l image -r -d 'An update image of the product'
complete -c hxhost -n '__fish_seen_subcommand_from support' -s o -l output -r -d 'Report to write'
complete -c hxhost -n '__fish_seen_subcommand_from support' -l image -r -d 'Image whose checksum goes in'
complete -c hxhost -n '__fish_seen_subcommand_from support' -l last-trace -r -d 'What --trace wrote'
complete -c hxhost -n '__fish_seen_subcommand_from monitor simulate' -l seconds -x -d 'Stop after this time'
complete -c hxhost -n '__fish_seen_subcommand_from monitor' -l count -x -d 'Stop after so many messages'
complete -c hxhost -n '__fish_seen_subcommand_from trace' -l svg -r -d 'Draw a picture'
complete -c hxhost -n '__fish_seen_subcommand_from simulate' -l name -x -d 'Name of the port'
complete -c hxhost -n '__fish_seen_subcommand_from simulate' -l backend -x -a 'alsa jack core' -d 'Kind of port'
complete -c hxhost -n '__fish_seen_subcommand_from simulate' -l state -r -d 'File that keeps the memory'
