" Vim takes *.st for Smalltalk.
autocmd BufRead,BufNewFile *.st,*.ST set filetype=iecst
