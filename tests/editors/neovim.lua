-- Types a line into a document and waits for its result. Run by `neovim_test.cpp`; says what is seen, line by line.
local out = assert(io.open(os.getenv('VEMO_SEEN'), 'w'))

local function seen()
  local namespace = vim.api.nvim_get_namespaces()['vemo']
  local lines = {}
  for _, mark in ipairs(vim.api.nvim_buf_get_extmarks(0, namespace, 0, -1, { details = true })) do
    table.insert(lines, mark[2] .. ': ' .. vim.trim(mark[4].virt_text[1][1]))
  end
  return table.concat(lines, ', ')
end

local function await(expected)
  vim.wait(20000, function() return seen() == expected end, 10)
  out:write(seen() .. '\n')
end

require('vemo').setup({ command = { os.getenv('VEMO_COMMAND'), 'lsp', '--locale', 'en_US' }, settings = { precision = 3 } })
vim.cmd('edit ' .. os.getenv('VEMO_DOCUMENT'))
out:write(vim.bo.filetype .. ' ' .. vim.bo.commentstring .. '\n')
await('0: 6 ft, 1: 182.88 cm')
vim.api.nvim_feedkeys(vim.api.nvim_replace_termcodes('Go10 / 3<Esc>', true, false, true), 'x', false)
await('0: 6 ft, 1: 182.88 cm, 2: 3.333')
vim.api.nvim_feedkeys('ggdd', 'x', false)
await('1: 3.333')
out:close()
vim.cmd('qall!')
