autocmd BufRead,BufNewFile *.vemo setfiletype vemo
