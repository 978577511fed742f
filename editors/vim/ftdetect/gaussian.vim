" Job files by their names; of *.com, which Vim takes for DCL, those that do not begin as DCL does.
function! s:TakeJob()
  let line = nextnonblank(1)
  if line == 0 || getline(line) !~# '^\s*\$'
    setlocal filetype=gaussian
  endif
endfunction
autocmd BufRead,BufNewFile *.gjf,*.gau setlocal filetype=gaussian
autocmd BufRead,BufNewFile *.com call s:TakeJob()
