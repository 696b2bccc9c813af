-- Results at the ends of lines, from `vemo lsp`.
local M = { settings = {}, command = { 'vemo', 'lsp' } }

local namespace = vim.api.nvim_create_namespace('vemo')
local started

-- Neovim 0.10 shows hints itself; before it, they are virtual text, asked for after every change.
local own_hints = vim.lsp.inlay_hint == nil

-- Of a long document, what its windows show and some lines around it.
local function lines_to_show(buffer)
  local last = vim.api.nvim_buf_line_count(buffer)
  if last <= 1000 then
    return 0, last
  end
  local first, around = last, 200
  last = 0
  for _, window in ipairs(vim.fn.win_findbuf(buffer)) do
    local info = vim.fn.getwininfo(window)[1]
    first, last = math.min(first, info.topline), math.max(last, info.botline)
  end
  return math.max(first - around, 0), last + around
end

local function show(buffer, client)
  if not vim.api.nvim_buf_is_loaded(buffer) then
    return
  end
  local first, last = lines_to_show(buffer)
  local params = {
    textDocument = { uri = vim.uri_from_bufnr(buffer) },
    range = { start = { line = first, character = 0 }, ['end'] = { line = last, character = 0 } },
  }
  client.request('textDocument/inlayHint', params, function(problem, hints)
    if problem or not hints or not vim.api.nvim_buf_is_loaded(buffer) then
      return
    end
    vim.api.nvim_buf_clear_namespace(buffer, namespace, 0, -1)
    for _, hint in ipairs(hints) do
      if hint.position.line < vim.api.nvim_buf_line_count(buffer) then
        vim.api.nvim_buf_set_extmark(buffer, namespace, hint.position.line, 0, {
          virt_text = { { '  ' .. hint.label, 'VemoResult' } },
          virt_text_pos = 'eol',
        })
      end
    end
  end, buffer)
end

local function on_attach(client, buffer)
  if not own_hints then
    vim.lsp.inlay_hint.enable(true, { bufnr = buffer })
    return
  end
  show(buffer, client)
  vim.api.nvim_buf_attach(buffer, false, {
    on_lines = function()
      vim.schedule(function() show(buffer, client) end)
    end,
  })
  vim.api.nvim_create_autocmd('WinScrolled', {
    buffer = buffer,
    callback = function() show(buffer, client) end,
  })
end

local function client_for_all()
  if started and vim.lsp.get_client_by_id(started) then
    return started
  end
  local capabilities = vim.lsp.protocol.make_client_capabilities()
  if own_hints then
    capabilities.workspace.inlayHint = { refreshSupport = true }
  end
  started = vim.lsp.start_client({
    name = 'vemo',
    cmd = M.command,
    root_dir = vim.fn.getcwd(),
    capabilities = capabilities,
    init_options = next(M.settings) and M.settings or nil,
    flags = { debounce_text_changes = own_hints and 0 or nil },
    on_attach = on_attach,
    handlers = own_hints and {
      ['workspace/inlayHint/refresh'] = function(_, _, context)
        local client = vim.lsp.get_client_by_id(context.client_id)
        for _, buffer in ipairs(vim.lsp.get_buffers_by_client_id(context.client_id)) do
          show(buffer, client)
        end
        return vim.NIL
      end,
    } or nil,
  })
  return started
end

-- For the current buffer; the file type does it.
function M.attach()
  vim.cmd('highlight default link VemoResult Comment')
  local client = client_for_all()
  if client then
    vim.lsp.buf_attach_client(0, client)
  end
end

-- `settings` are those of the server; `command` is how it is started.
function M.setup(options)
  M.settings = options.settings or M.settings
  M.command = options.command or M.command
end

return M
