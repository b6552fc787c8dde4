" Colours of Structured Text, for what the server's semantic tokens do not reach: Neovim before 0.9,
" and files that the server has not seen yet.
if exists("b:current_syntax")
  finish
endif
syntax case ignore

syntax match iecstFunction "\<\h\w*\ze\s*("
syntax match iecstOperator "[-+*/=<>&^]\|:=\|=>\|\.\."
syntax keyword iecstOperator AND AND_THEN OR OR_ELSE XOR NOT MOD
syntax keyword iecstStatement IF THEN ELSIF ELSE END_IF CASE OF END_CASE FOR TO BY DO END_FOR WHILE
syntax keyword iecstStatement END_WHILE REPEAT UNTIL END_REPEAT EXIT CONTINUE RETURN
syntax keyword iecstStructure PROGRAM END_PROGRAM FUNCTION END_FUNCTION FUNCTION_BLOCK
syntax keyword iecstStructure END_FUNCTION_BLOCK VAR VAR_INPUT VAR_OUTPUT VAR_IN_OUT VAR_TEMP
syntax keyword iecstStructure VAR_GLOBAL VAR_CONFIG VAR_EXTERNAL END_VAR CONSTANT RETAIN NON_RETAIN
syntax keyword iecstStructure PERSISTENT AT TYPE END_TYPE STRUCT END_STRUCT CONFIGURATION
syntax keyword iecstStructure END_CONFIGURATION RESOURCE END_RESOURCE TASK WITH
syntax keyword iecstType ARRAY POINTER REF_TO STRING WSTRING BOOL BYTE WORD DWORD LWORD SINT USINT INT
syntax keyword iecstType UINT DINT UDINT LINT ULINT REAL LREAL TIME LTIME DATE TIME_OF_DAY TOD
syntax keyword iecstType DATE_AND_TIME DT
syntax keyword iecstBoolean TRUE FALSE
" Keywords only where a part of a unit test begins or ends, and names otherwise.
syntax match iecstStructure "^\s*\%(END_\)\?\%(TEST\|SETUP\|TEARDOWN\)\>"

syntax match iecstNumber "\<\d[0-9_]*\%(\.\d[0-9_]*\)\?\%(E[-+]\?\d\+\)\?\>"
syntax match iecstNumber "\<\d\+#[0-9A-F_]\+\>"
" Typed literals: INT#5, T#1h30m, D#2026-01-31, Color#Red.
syntax match iecstNumber "\<\h\w*#[-+]\?\w[-0-9A-Z_.:#]*"
syntax match iecstAddress "%\a\+\%(\d[0-9.]*\|\*\)\?"
syntax region iecstString start="'" skip="\$." end="'" oneline
syntax region iecstString start=+"+ skip="\$." end=+"+ oneline
syntax match iecstComment "//.*$"
syntax region iecstComment start="(\*" end="\*)" contains=iecstComment
syntax region iecstComment start="/\*" end="\*/"
syntax region iecstPragma start="{" end="}"

highlight default link iecstFunction Function
highlight default link iecstOperator Operator
highlight default link iecstStatement Statement
highlight default link iecstStructure Structure
highlight default link iecstType Type
highlight default link iecstBoolean Boolean
highlight default link iecstNumber Number
highlight default link iecstAddress Special
highlight default link iecstString String
highlight default link iecstComment Comment
highlight default link iecstPragma PreProc
let b:current_syntax = "iecst"
