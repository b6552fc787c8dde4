-- The client of `velc lsp`, for Neovim 0.7 and later.
local velops = {
  -- How the server is started. A configuration may change it before a file is opened.
  cmd = { "velc", "lsp" },
}

local client -- of versions without vim.lsp.start, which finds its clients itself

-- Tells how a run of `velc.runTests` has ended; failures are diagnostics of their own.
local function show_test_results(_, report)
  if report.error then return end -- which the server has shown
  local level = report.failed > 0 and vim.log.levels.ERROR or vim.log.levels.INFO
  vim.notify(("%d tests passed, %d failed"):format(report.passed, report.failed), level)
end

local function map_keys(_, buffer)
  local keys = {
    ["gd"] = vim.lsp.buf.definition,
    ["gy"] = vim.lsp.buf.type_definition,
    ["gr"] = vim.lsp.buf.references,
    ["K"] = vim.lsp.buf.hover,
    ["<F2>"] = vim.lsp.buf.rename,
    ["<leader>a"] = vim.lsp.buf.code_action,
    ["<leader>f"] = velops.format,
    ["<leader>t"] = vim.lsp.codelens.run,
    ["gl"] = vim.diagnostic.open_float,
    ["[d"] = vim.diagnostic.goto_prev,
    ["]d"] = vim.diagnostic.goto_next,
  }
  for key, action in pairs(keys) do
    vim.keymap.set("n", key, action, { buffer = buffer })
  end
  vim.keymap.set("i", "<C-k>", vim.lsp.buf.signature_help, { buffer = buffer })
  vim.api.nvim_create_autocmd({ "BufEnter", "InsertLeave", "BufWritePost" }, {
    buffer = buffer,
    callback = function() vim.lsp.codelens.refresh() end,
  })
  vim.lsp.codelens.refresh()
end

function velops.format()
  -- Neovim 0.7 has a function of its own that waits.
  (vim.lsp.buf.format or vim.lsp.buf.formatting_sync)()
end

-- Attaches the server to the current buffer.
function velops.start()
  if vim.fn.executable(velops.cmd[1]) == 0 then
    vim.notify("velops: there is no program " .. velops.cmd[1], vim.log.levels.WARN)
    return
  end
  local config = {
    name = "velops",
    cmd = velops.cmd,
    root_dir = vim.loop.cwd(), -- the server looks for velops.json itself
    handlers = { ["velc/testResults"] = show_test_results },
    on_attach = map_keys,
    on_exit = function() client = nil end,
  }
  if vim.lsp.start then
    vim.lsp.start(config)
    return
  end
  client = client or vim.lsp.start_client(config)
  vim.lsp.buf_attach_client(0, client)
end

return velops
