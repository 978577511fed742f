" Colours Gaussian job files: Link 0, route, title, molecule and what follows, section by section, as blank lines end them.
if exists("b:current_syntax")
  finish
endif
syn case ignore
syn iskeyword @,48-57,_,-,+

syn match gaussianComment "!.*"
syn match gaussianSeparator "^\s*--link1--.*"

" Link 0
syn match gaussianLink0Line "^\s*%.*" contains=gaussianLink0Sign,gaussianComment
syn match gaussianLink0Sign "%" contained nextgroup=gaussianLink0Name skipwhite
syn match gaussianLink0Name "[a-z0-9]\+" contained nextgroup=gaussianLink0Equals contains=gaussianLink0Key skipwhite
syn match gaussianLink0Equals "=" contained nextgroup=gaussianLink0Value skipwhite
syn match gaussianLink0Value "[^! \t]\%([^!]*[^! \t]\)\?" contained

" The route ends at a blank line; the title stands behind it, unless it is read from the checkpoint with the molecule.
syn region gaussianRoute start="^\s*#"rs=s end="^\s*$" keepend contains=@gaussianRouteWords nextgroup=gaussianTitle skipempty
syn region gaussianRoute start="^\s*#\%(.*\S.*\n\)\{-}.*\<allch"rs=s end="^\s*$" keepend contains=@gaussianRouteWords
      \ nextgroup=gaussianSections skipempty
syn match gaussianUnknownWord "[^ \t,/=:()#!]\+" contained nextgroup=gaussianEquals,gaussianOptionList skipwhite
syn match gaussianSlash "/" contained nextgroup=gaussianBasisName,gaussianMethod skipwhite
syn match gaussianBasisName "[^ \t,/=:()!]\+\%(([^)]*)\)\?[^ \t,/=:()!]*" contained nextgroup=gaussianEquals
syn match gaussianBasisTail "\*\+\|\*\?([^) \t]*)" contained
syn match gaussianHead "#[pnt]\?" contained
runtime syntax/gaussian_words.vim
syn keyword gaussianKeyword oniom contained nextgroup=gaussianOniom,gaussianOniomEquals skipwhite
syn match gaussianOniomEquals "=" contained nextgroup=gaussianOniom skipwhite
syn region gaussianOniom start="(" end=")" contained contains=gaussianUnknownWord,gaussianSlash,gaussianMethod,gaussianBasis
      \ nextgroup=gaussianEquals skipwhite
syn cluster gaussianRouteWords contains=gaussianHead,gaussianUnknownWord,gaussianSlash,gaussianMethod,gaussianKeyword,
      \gaussianBasis,gaussianComment

" Options
syn match gaussianEquals "=" contained nextgroup=gaussianOptionList,gaussianOption skipwhite
syn match gaussianOption "\%(\"[^\"]*\"\|[^ \t,=()!\"]\)\+" contained nextgroup=gaussianValueEquals,gaussianValueList skipwhite
syn region gaussianOptionList start="(" end=")" contained contains=gaussianOption,gaussianComment
syn match gaussianValueEquals "=" contained nextgroup=gaussianValue,gaussianValueList skipwhite
syn match gaussianValue "\%(\"[^\"]*\"\|[^ \t,()!\"]\)\+" contained
syn region gaussianValueList start="(" end=")" contained contains=gaussianValue,gaussianComment

" Title, charge and multiplicity
syn region gaussianTitle start="^\s*\S" end="^\s*$" contained nextgroup=gaussianCharge,gaussianChargeComment skipempty
syn match gaussianChargeComment "^\s*!.*" contained nextgroup=gaussianCharge,gaussianChargeComment skipempty
syn match gaussianCharge "^\s*[-+0-9].*" contained contains=gaussianNumber,gaussianComment nextgroup=gaussianAtoms skipempty

" Molecule: in rows of a Z-matrix the second, fourth and sixth word name atoms.
syn region gaussianAtoms start="^\s*\S"rs=s end="^\s*$" end="^\ze\s*--link1--" end="^\ze\s*\%(variables\|constants\)\>"
      \ contained nextgroup=gaussianSections skipempty
      \ contains=gaussianLabel,gaussianNumber,gaussianVariable,gaussianLayer,gaussianComment,gaussianRow,gaussianAssigned
syn match gaussianVariable "\%([ \t,][-+]\?\)\@2<=\a[^ \t,!]*" contained
syn match gaussianNumber "\%(^\|[ \t,=]\)\@1<=[-+]\?\.\?\d[^ \t,!]*" contained
syn match gaussianLayer "[ \t,]\@1<=\%(h\%[igh]\|l\%[ow]\|m\%[edium]\)[ \t,!]\@=\|[ \t,]\@1<=\%(h\%[igh]\|l\%[ow]\|m\%[edium]\)$" contained nextgroup=gaussianLinkAtom skipwhite
syn match gaussianLinkAtom "\a[^ \t,!]*" contained
syn match gaussianLabel "^\s*\zs[^ \t,(!@]\+\%(([^)]*)\)\?[^ \t,!]*" contained
syn match gaussianAssigned "^\s*\zs\a\w*\ze\s*=" contained
syn match gaussianRow "^\s*\S\+\s\+\%(\a\w*\|[1-9]\d*\)\s\+\S\+\%(\s\+\a\w*\s\+[^ \tLMH]\S*\)\{0,2}\%(\s\+[-+]\?[01]\)\?\s*$" contained
      \ contains=gaussianLabel,gaussianNumber,gaussianVariable,gaussianRowAtom
syn match gaussianRowAtom "\%(^\s*\S\+\%(\s\+\S\+\s\+\S\+\)\{0,2}\s\+\)\@<=\a\w*" contained

" What stands behind the molecule: variables, and sections that the route asks for.
syn region gaussianSections start="^" end="^\ze\s*--link1--" contained contains=gaussianNumber,gaussianGiven,gaussianComment
syn match gaussianGiven "^\s*\zs\a\w*\ze\%(\s*=\s*\|\s\+\)[-+]\?\.\?\d" contained

" A line of three coordinates tells where it stands; without one before it, the file is read from its start.
syn sync match gaussianSyncAtom grouphere gaussianAtoms "^\s*\a\S*\s\+\%(-\?\d\+\s\+\)\?-\?\d*\.\d\+\s\+-\?\d*\.\d\+\s\+-\?\d*\.\d\+"

hi def link gaussianComment Comment
hi def link gaussianSeparator PreProc
hi def link gaussianLink0Key PreProc
hi def link gaussianLink0Value String
hi def link gaussianHead Operator
hi def link gaussianMethod Function
hi def link gaussianBasis Type
hi def link gaussianBasisName gaussianBasis
hi def link gaussianBasisTail gaussianBasis
hi def link gaussianKeyword Statement
hi def link gaussianOption Identifier
hi def link gaussianValue Constant
hi def link gaussianTitle String
hi def link gaussianNumber Number
hi def link gaussianLabel Structure
hi def link gaussianLinkAtom gaussianLabel
hi def link gaussianLayer Constant
hi def link gaussianVariable Identifier
hi def link gaussianAssigned gaussianVariable
hi def link gaussianGiven gaussianVariable
hi def link gaussianRowAtom gaussianNumber

let b:current_syntax = "gaussian"
