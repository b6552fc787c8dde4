-- Neovim with the settings of editors/neovim and the real server, used by keys as people do:
--   nvim --headless -u NONE -S keys_test.lua, with VELC and SOURCE in the environment.
-- This Neovim drives another one, which has no window either.

local velc, source = os.getenv("VELC"), os.getenv("SOURCE")
local folder = vim.fn.tempname()
local child

local files = {
  ["velops.json"] = '{"sources": ["*.st"]}',
  ["blocks.st"] = [[
FUNCTION_BLOCK Valve
VAR_INPUT open : BOOL; END_VAR
VAR_OUTPUT position : INT; END_VAR
IF open THEN position := 100; ELSE position := 0; END_IF;
END_FUNCTION_BLOCK
]],
  ["main.st"] = [[
PROGRAM Main
VAR
  inlet : Valve;
  level : INT;
END_VAR
inlet(open := TRUE);
level := inlet.position;
lvel := 1;
END_PROGRAM

TEST 'fails'
ASSERT_EQ(1, 2);
END_TEST
]],
}

local function lua(code, ...) return vim.fn.rpcrequest(child, "nvim_exec_lua", code, { ... }) end
local function keys(text) vim.fn.rpcrequest(child, "nvim_input", text) end
local function line(number) return lua("return vim.fn.getline(...)", number) end

local function equal(expected, actual, what)
  if not vim.deep_equal(expected, actual) then
    error(("%s: expected %s, not %s"):format(what, vim.inspect(expected), vim.inspect(actual)))
  end
end

-- Waits until the child's `code` returns what is expected.
local function becomes(expected, code, what)
  local actual
  vim.wait(10000, function()
    actual = lua(code)
    return vim.deep_equal(expected, actual)
  end, 10)
  equal(expected, actual, what)
end

local DIAGNOSTICS = [[
  return vim.tbl_map(function(d) return { d.lnum + 1, d.col + 1, d.end_col + 1, d.code or '', d.severity } end,
                     vim.diagnostic.get(0))]]

local tests = {
  { "diagnostics", function()
    becomes({ { 8, 1, 5, "0xF0020", 1 } }, DIAGNOSTICS, "a misspelt name")
    keys("8Gcwlevel<Esc>")
    becomes({}, DIAGNOSTICS, "the name is mended")
    keys("u")
    becomes({ { 8, 1, 5, "0xF0020", 1 } }, DIAGNOSTICS, "undone")
  end },
  { "quick fix", function()
    lua("vim.ui.select = function(actions, _, chosen) chosen(actions[1], 1) end")
    keys("8G0\\a")
    becomes("level := 1;", "return vim.fn.getline(8)", "did you mean")
    becomes({}, DIAGNOSTICS, "mended")
  end },
  { "completion", function()
    keys("8Golevel := inlet.po<C-x><C-o>")
    becomes({ "position" },
      "return vim.tbl_map(function(item) return item.word end, vim.fn.complete_info({'items'}).items)",
      "members that begin so")
    keys("<C-y><Esc>")
    becomes("level := inlet.position", "return vim.fn.getline(9)", "chosen")
    keys("A;<Esc>")
    becomes({}, DIAGNOSTICS, "completed")
  end },
  { "definition", function()
    keys("7G$bgd")
    becomes({ "blocks.st", 3, 12 },
      "return { vim.fn.expand('%:t'), vim.fn.line('.'), vim.fn.col('.') }", "in another file")
    keys("<C-o>")
    becomes("main.st", "return vim.fn.expand('%:t')", "and back")
  end },
  { "rename", function()
    keys("7G$b<F2>")
    vim.wait(10000, function() return vim.fn.rpcrequest(child, "nvim_get_mode").mode == "c" end, 10)
    keys("<C-u>opening<CR>")
    becomes("level := inlet.opening;", "return vim.fn.getline(7)", "where it is used")
    becomes("VAR_OUTPUT opening : INT; END_VAR",
      "return vim.fn.getbufline(vim.fn.bufnr('blocks.st'), 3)[1]", "where it is declared")
    becomes({}, DIAGNOSTICS, "renamed everywhere")
  end },
  { "formatting", function()
    keys("8GA   // high<Esc>0i     <Esc>\\f")
    becomes("  level := 1;  // high", "return vim.fn.getline(8)", "the blanks of the style")
  end },
  { "hover", function()
    keys("8G^K")
    becomes(true, [[
      for _, window in ipairs(vim.api.nvim_list_wins()) do
        local lines = vim.api.nvim_buf_get_lines(vim.api.nvim_win_get_buf(window), 0, -1, true)
        if vim.api.nvim_win_get_config(window).relative ~= "" and
           table.concat(lines, " "):find("level : INT", 1, true) then return true end
      end]], "the declaration in a window")
  end },
  { "unit test", function()
    keys("<Esc>:wa<CR>G?TEST '<CR>")
    becomes(2, "return #vim.lsp.codelens.get(0)", "lenses")
    keys("\\t")
    becomes("velc test", "return (vim.diagnostic.get(0)[1] or {}).source", "its failure")
    keys("ggOVAR_GLOBAL g : INT; END_VAR<Esc>")
    becomes({}, DIAGNOSTICS, "until the next edit")
  end },
  { "colours", function()
    -- Each word that the scanner knows has the colour of a keyword.
    local count = 0
    for _, word in ipairs(vim.fn.readfile(source .. "/refhost/syntax/lexer.l")) do
      word = word:match("^([a-z][a-z_]+)|?%S*%s+{ return Token::[A-Z_]+; }")
      if word then
        count = count + 1
        keys("<Esc>ggO" .. word .. " <Esc>")
        local group = lua("return vim.fn.synIDattr(vim.fn.synID(1, 1, 1), 'name')")
        if group == "" or group == "iecstFunction" then error(word .. " has no colour") end
      end
    end
    if count < 50 then error("only " .. count .. " words are found in the scanner") end
  end },
}

local function run()
  vim.fn.mkdir(folder, "p")
  for name, text in pairs(files) do
    vim.fn.writefile(vim.split(text:gsub("\n$", ""), "\n"), folder .. "/" .. name)
  end
  child = vim.fn.jobstart({ vim.v.progpath, "--embed", "--headless", "-u", "NONE",
    "--cmd", "set noswapfile hidden runtimepath^=" .. source .. "/editors/neovim",
    "--cmd", ("lua require('velops').cmd = { %q, 'lsp' }"):format(velc),
    "--cmd", "syntax on | filetype plugin on", "main.st" }, { rpc = true, cwd = folder })
  for _, test in ipairs(tests) do
    local begin = vim.loop.hrtime()
    test[2]()
    io.write(("%s: passed, %d ms\n"):format(test[1], (vim.loop.hrtime() - begin) / 1e6))
  end
end

local passed, failure = xpcall(run, debug.traceback)
if not passed then
  io.write(failure .. "\n")
  if child then pcall(function() io.write(lua("return vim.api.nvim_exec('messages', true)") .. "\n") end) end
end
if child then vim.fn.jobstop(child) end
vim.fn.delete(folder, "rf")
vim.cmd(passed and "quitall!" or "cquit")
