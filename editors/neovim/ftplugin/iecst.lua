vim.bo.commentstring = "// %s"
vim.bo.comments = "://"
vim.bo.expandtab = true
vim.bo.shiftwidth = 2
vim.bo.omnifunc = "v:lua.vim.lsp.omnifunc"
require("velops").start()
