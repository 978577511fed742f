-- require("quor_gjf").setup() starts the language server for each job file, also where Neovim has no vim.lsp.enable (before 0.11).
-- setup({ cmd = { "/where/quor-gjf", "lsp" } }) names the program.
local M = {}

local client_id

function M.setup(options)
    local here = vim.fn.fnamemodify(debug.getinfo(1, "S").source:sub(2), ":p:h:h")
    local config = vim.tbl_extend("force", dofile(here .. "/lsp/quor_gjf.lua"), options or {})
    if vim.lsp.enable then
        vim.lsp.config("quor_gjf", config)
        vim.lsp.enable("quor_gjf")
        return
    end
    local function attach(buffer)
        if not client_id or not vim.lsp.get_client_by_id(client_id) then
            config.root_dir = vim.fn.getcwd()
            client_id = vim.lsp.start_client(config)
        end
        vim.lsp.buf_attach_client(buffer, client_id)
        vim.bo[buffer].omnifunc = "v:lua.vim.lsp.omnifunc"
    end
    vim.api.nvim_create_autocmd("FileType", {
        pattern = config.filetypes,
        callback = function(event)
            attach(event.buf)
        end,
    })
end

return M
