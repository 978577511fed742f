%chk=water.chk
%mem=2GB
#p b3lyp/6-31g(d) opt freq scf=(tight,tight)

Water, and its frequencies

0 2
O
H 1 r
H 1 r 2 a

r 0.96
a 104.5

