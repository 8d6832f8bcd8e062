# fish completion for paramtool; paramtool completion fish prints it
function __paramtool_is
    set -l words (commandline -opc)
    set -l command
    set -l isValue 0
    for word in $words[2..-1]
        if test $isValue = 1
            set isValue 0
            continue
        end
        switch $word
            case --layout
                set isValue 1
            case '-*'
            case '*'
                set command $command $word
                contains -- $command[1] layout ticket; and test (count $command) -lt 2; or break
        end
    end
    test $isValue = 0; and test "$command" = "$argv[1]"
end
complete -c paramtool -n '__paramtool_is \'\'' -l layout -r
complete -c paramtool -f -n '__paramtool_is \'\'' -l json
complete -c paramtool -f -n '__paramtool_is \'\'' -l version
complete -c paramtool -l help
complete -c paramtool -f -n '__paramtool_is \'\'' -a layout
complete -c paramtool -f -n '__paramtool_is \'\'' -a ticket
complete -c paramtool -f -n '__paramtool_is \'\'' -a show -d 'Shows the tree of a file with values, units and flags'
complete -c paramtool -f -n '__paramtool_is \'\'' -a query -d 'Prints the value at a path, or lists paths'
complete -c paramtool -f -n '__paramtool_is \'\'' -a check -d 'Says what in files doesn\'t fit the layout'
complete -c paramtool -f -n '__paramtool_is \'\'' -a set -d 'Changes values, all or none, in the format of the file'
complete -c paramtool -f -n '__paramtool_is \'\'' -a profile -d 'Adds, copies, renames or removes a profile'
complete -c paramtool -f -n '__paramtool_is \'\'' -a item -d 'Adds, moves or removes an item of a list'
complete -c paramtool -f -n '__paramtool_is \'\'' -a diff -d 'Compares two files path by path'
complete -c paramtool -f -n '__paramtool_is \'\'' -a convert -d 'Writes a file in another format and notes what that can\'t carry'
complete -c paramtool -f -n '__paramtool_is \'\'' -a export -d 'Writes all values as a table'
complete -c paramtool -f -n '__paramtool_is \'\'' -a import -d 'Takes the values of a table'
complete -c paramtool -f -n '__paramtool_is \'\'' -a new -d 'Writes a file with the layout\'s defaults'
complete -c paramtool -f -n '__paramtool_is \'\'' -a extract -d 'Writes the bytes of an attachment'
complete -c paramtool -f -n '__paramtool_is \'\'' -a migrate -d 'Takes the values of a file to another layout, and says what becomes of each'
complete -c paramtool -f -n '__paramtool_is \'layout\'' -a lint -d 'Says what is wrong with a layout'
complete -c paramtool -f -n '__paramtool_is \'layout\'' -a diff -d 'Compares two layouts node by node'
complete -c paramtool -f -n '__paramtool_is \'layout\'' -a schema -d 'Writes an XML schema of the layout\'s parameter files'
complete -c paramtool -f -n '__paramtool_is \'layout\'' -a page -d 'Writes a page on which a layout can be seen and tried'
complete -c paramtool -f -n '__paramtool_is \'ticket\'' -a show -d 'Lists the properties of a build ticket'
complete -c paramtool -f -n '__paramtool_is \'ticket\'' -a diff -d 'Compares two build tickets'
complete -c paramtool -f -n '__paramtool_is \'ticket\'' -a effective -d 'Says what counts for a part, and where it comes from'
complete -c paramtool -f -n '__paramtool_is \'\'' -a completion -d 'Prints the completion for a shell'
complete -c paramtool -f -n '__paramtool_is \'\'' -a manual -d 'Prints the manual page'
complete -c paramtool -n '__paramtool_is \'show\'' -l changed -d 'only what differs from the layout\'s defaults'
complete -c paramtool -n '__paramtool_is \'show\'' -l hidden -d 'also what users of the file don\'t see'
complete -c paramtool -n '__paramtool_is \'show\'' -l layout -r -a sample -d 'a layout meta file or property template, or "sample" for the sample layout, the default'
complete -c paramtool -n '__paramtool_is \'show\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'query\'' -l contains -r -d 'list the parameters with this text in their path, in this case; without either, all'
complete -c paramtool -n '__paramtool_is \'query\'' -l ignore-case -d 'let capitals and small letters count as the same'
complete -c paramtool -n '__paramtool_is \'query\'' -l layout -r -a sample -d 'a layout meta file or property template, or "sample" for the sample layout, the default'
complete -c paramtool -n '__paramtool_is \'query\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'check\'' -l strict -d 'let warnings and notes count as errors'
complete -c paramtool -n '__paramtool_is \'check\'' -l layout -r -a sample -d 'a layout meta file or property template, or "sample" for the sample layout, the default'
complete -c paramtool -n '__paramtool_is \'check\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'set\'' -l from -r -d 'take the changes from the lines of this file'
complete -c paramtool -n '__paramtool_is \'set\'' -l output -r -d 'write here instead of to FILE'
complete -c paramtool -n '__paramtool_is \'set\'' -l backup -d 'keep FILE as it was, with .bak behind its name'
complete -c paramtool -n '__paramtool_is \'set\'' -l in-place -d 'write over FILE where it stands if it can\'t be replaced'
complete -c paramtool -n '__paramtool_is \'set\'' -l force -d 'accept losses, and values that the layout objects to'
complete -c paramtool -n '__paramtool_is \'set\'' -l layout -r -a sample -d 'a layout meta file or property template, or "sample" for the sample layout, the default'
complete -c paramtool -n '__paramtool_is \'set\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'profile\'' -xa 'add copy rename remove'
complete -c paramtool -n '__paramtool_is \'profile\'' -l output -r -d 'write here instead of to FILE'
complete -c paramtool -n '__paramtool_is \'profile\'' -l backup -d 'keep FILE as it was, with .bak behind its name'
complete -c paramtool -n '__paramtool_is \'profile\'' -l in-place -d 'write over FILE where it stands if it can\'t be replaced'
complete -c paramtool -n '__paramtool_is \'profile\'' -l force -d 'accept losses, and values that the layout objects to'
complete -c paramtool -n '__paramtool_is \'profile\'' -l layout -r -a sample -d 'a layout meta file or property template, or "sample" for the sample layout, the default'
complete -c paramtool -n '__paramtool_is \'profile\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'item\'' -xa 'add move remove'
complete -c paramtool -n '__paramtool_is \'item\'' -l output -r -d 'write here instead of to FILE'
complete -c paramtool -n '__paramtool_is \'item\'' -l backup -d 'keep FILE as it was, with .bak behind its name'
complete -c paramtool -n '__paramtool_is \'item\'' -l in-place -d 'write over FILE where it stands if it can\'t be replaced'
complete -c paramtool -n '__paramtool_is \'item\'' -l force -d 'accept losses, and values that the layout objects to'
complete -c paramtool -n '__paramtool_is \'item\'' -l layout -r -a sample -d 'a layout meta file or property template, or "sample" for the sample layout, the default'
complete -c paramtool -n '__paramtool_is \'item\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'diff\'' -l layout -r -a sample -d 'a layout meta file or property template, or "sample" for the sample layout, the default'
complete -c paramtool -n '__paramtool_is \'diff\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'convert\'' -l to -xa 'generic machine meta template' -d 'generic or machine for parameters, meta or template for layouts'
complete -c paramtool -n '__paramtool_is \'convert\'' -l layout -r -a sample -d 'a layout meta file or property template, or "sample" for the sample layout, the default'
complete -c paramtool -n '__paramtool_is \'convert\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'export\'' -l to -xa 'csv json' -d 'csv or json'
complete -c paramtool -n '__paramtool_is \'export\'' -l output -r -d 'write here instead of to the standard output'
complete -c paramtool -n '__paramtool_is \'export\'' -l layout -r -a sample -d 'a layout meta file or property template, or "sample" for the sample layout, the default'
complete -c paramtool -n '__paramtool_is \'export\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'import\'' -l output -r -d 'write here instead of to FILE'
complete -c paramtool -n '__paramtool_is \'import\'' -l backup -d 'keep FILE as it was, with .bak behind its name'
complete -c paramtool -n '__paramtool_is \'import\'' -l in-place -d 'write over FILE where it stands if it can\'t be replaced'
complete -c paramtool -n '__paramtool_is \'import\'' -l force -d 'accept losses, and values that the layout objects to'
complete -c paramtool -n '__paramtool_is \'import\'' -l layout -r -a sample -d 'a layout meta file or property template, or "sample" for the sample layout, the default'
complete -c paramtool -n '__paramtool_is \'import\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'new\'' -l force -d 'write over a file that is there'
complete -c paramtool -n '__paramtool_is \'new\'' -l layout -r -a sample -d 'a layout meta file or property template, or "sample" for the sample layout, the default'
complete -c paramtool -n '__paramtool_is \'new\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'extract\'' -l layout -r -a sample -d 'a layout meta file or property template, or "sample" for the sample layout, the default'
complete -c paramtool -n '__paramtool_is \'extract\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'migrate\'' -l from -r -d 'the layout that the file was made with'
complete -c paramtool -n '__paramtool_is \'migrate\'' -l to -r -d 'the layout that it is to have'
complete -c paramtool -n '__paramtool_is \'migrate\'' -l rename -r -d 'what stood at OLD stands at NEW: names from below ProfileEditor, joined by /'
complete -c paramtool -n '__paramtool_is \'migrate\'' -l dry-run -d 'only show what would become of each value'
complete -c paramtool -n '__paramtool_is \'migrate\'' -l output -r -d 'write here instead of to FILE'
complete -c paramtool -n '__paramtool_is \'migrate\'' -l backup -d 'keep FILE as it was, with .bak behind its name'
complete -c paramtool -n '__paramtool_is \'migrate\'' -l in-place -d 'write over FILE where it stands if it can\'t be replaced'
complete -c paramtool -n '__paramtool_is \'migrate\'' -l force -d 'accept losses, and values that the layout objects to'
complete -c paramtool -n '__paramtool_is \'migrate\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'layout lint\'' -l strict -d 'let warnings and notes count as errors'
complete -c paramtool -n '__paramtool_is \'layout lint\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'layout diff\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'layout schema\'' -s o -l output -r -d 'the XML schema to write'
complete -c paramtool -n '__paramtool_is \'layout schema\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'layout page\'' -s o -l output -r -d 'the page to write'
complete -c paramtool -n '__paramtool_is \'layout page\'' -l values -r -d 'show the values of this parameter file'
complete -c paramtool -n '__paramtool_is \'layout page\'' -l language -r -d 'the language of the layout\'s dictionary to begin with'
complete -c paramtool -n '__paramtool_is \'layout page\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'ticket show\'' -l part -r -d 'only what this part overrides'
complete -c paramtool -n '__paramtool_is \'ticket show\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'ticket diff\'' -l part -r -d 'only what this part overrides'
complete -c paramtool -n '__paramtool_is \'ticket diff\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'ticket effective\'' -l part -r -d 'of this part; otherwise of every part that overrides nothing'
complete -c paramtool -n '__paramtool_is \'ticket effective\'' -l layout -r -a sample -d 'a layout meta file or property template, or "sample" for the sample layout, the default'
complete -c paramtool -n '__paramtool_is \'ticket effective\'' -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'completion\'' -f -xa 'bash zsh fish'
complete -c paramtool -n '__paramtool_is \'completion\'' -f -l json -d 'one JSON document instead of lines'
complete -c paramtool -n '__paramtool_is \'manual\'' -f -l json -d 'one JSON document instead of lines'
