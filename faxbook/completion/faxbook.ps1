# Completion of faxbook for PowerShell.
Register-ArgumentCompleter -Native -CommandName faxbook, faxbook.exe -ScriptBlock {
    param($wordToComplete, $commandAst, $cursorPosition)
    $words = @($commandAst.CommandElements | Select-Object -Skip 1 |
        Where-Object { $_.Extent.EndOffset -lt $cursorPosition } |
        ForEach-Object { if ($null -ne $_.Value) { "$($_.Value)" } else { $_.Extent.Text } })
    $position = $words.Count
    # Windows PowerShell drops arguments that are empty.
    if ($wordToComplete) { $words += $wordToComplete.Trim('"', "'") }
    $program = $commandAst.CommandElements[0].Extent.Text.Trim('"', "'")
    $encoding = [Console]::OutputEncoding
    try {
        [Console]::OutputEncoding = [System.Text.UTF8Encoding]::new($false)
        & $program complete $position '--' @words 2>$null | Where-Object { $_ } | ForEach-Object {
            $text = if ($_ -match '[^\w./\\:+-]') { "'" + $_.Replace("'", "''") + "'" } else { $_ }
            [System.Management.Automation.CompletionResult]::new($text, $_, 'ParameterValue', $_)
        }
    } finally {
        [Console]::OutputEncoding = $encoding
    }
}
