# Completion of faxbook for PowerShell.
Register-ArgumentCompleter -Native -CommandName faxbook, faxbook.exe -ScriptBlock {
    param($wordToComplete, $commandAst, $cursorPosition)
    $words = @($commandAst.CommandElements | Select-Object -Skip 1 |
        Where-Object { $_.Extent.EndOffset -lt $cursorPosition } |
        ForEach-Object { if ($null -ne $_.Value) { "$($_.Value)" } else { $_.Extent.Text } })
    $position = $words.Count
    # Windows PowerShell drops arguments that are empty.
    if ($wordToComplete) { $words += $wordToComplete }
    $quotes = [char[]](0x22, 0x27, 0x2018, 0x2019, 0x201A, 0x201B, 0x201C, 0x201D, 0x201E)
    $program = $commandAst.CommandElements[0].Extent.Text.Trim($quotes)
    $passing = Get-Variable PSNativeCommandArgumentPassing -ValueOnly -ErrorAction Ignore
    $options = @(if ($null -eq $passing -or "$passing" -eq 'Legacy') { '--legacy' })
    $encoding = [Console]::OutputEncoding
    try {
        [Console]::OutputEncoding = [System.Text.UTF8Encoding]::new($false)
        # What is printed is quoted as it must stand in the command line.
        & $program complete @options $position '--' @words 2>$null | Where-Object { $_ } | ForEach-Object {
            [System.Management.Automation.CompletionResult]::new($_, $_, 'ParameterValue', $_)
        }
    } finally {
        [Console]::OutputEncoding = $encoding
    }
}
