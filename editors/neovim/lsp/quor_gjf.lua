-- How Neovim starts the language server; from 0.11 on `vim.lsp.enable("quor_gjf")` finds it here.
return {
    name = "quor_gjf",
    cmd = { "quor-gjf", "lsp" },
    filetypes = { "gaussian" },
    root_markers = { ".quor-gjf", ".git" },
}
