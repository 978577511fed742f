" Comments, and the words that completion takes as one, in Gaussian job files.
if exists("b:did_ftplugin")
  finish
endif
let b:did_ftplugin = 1
setlocal comments=:! commentstring=!\ %s iskeyword+=-,+
let b:undo_ftplugin = "setlocal comments< commentstring< iskeyword<"
