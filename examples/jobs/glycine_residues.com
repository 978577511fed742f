%chk=gly.chk
#p amber=softfirst geom=connectivity

Glycine with the labels of a protein file; O5' has a quote in its name

0 1
N-N3-0.2943(PDBName=N,ResName=GLY,ResNum=1)        0   -1.9000    0.5000    0.0000
H-H-0.1642(PDBName=H1,ResName=GLY,ResNum=1)        0   -2.4000    0.2000    0.8200
H-H-0.1642(PDBName=H2,ResName=GLY,ResNum=1)        0   -2.4000    0.2000   -0.8200
H-H-0.1642(PDBName=H3,ResName=GLY,ResNum=1)        0   -1.8000    1.5000    0.0000
C-CT--0.0100(PDBName=CA,ResName=GLY,ResNum=1)      0   -0.5700   -0.1200    0.0000
C-C-0.7231(PDBName=C,ResName=GLY,ResNum=1)         0    0.6000    0.8500    0.0000
O-O2--0.7855(PDBName=O,ResName=GLY,ResNum=1)       0    0.4000    2.0700    0.0000
O-O2--0.7855(PDBName=O5',ResName=GLY,ResNum=1)     0    1.7300    0.3100    0.0000
H-HP-0.0895(PDBName=HA2,ResName=GLY,ResNum=1)      0   -0.5000   -0.7600    0.8800
H-HP-0.0895(PDBName=HA3,ResName=GLY,ResNum=1)      0   -0.5000   -0.7600   -0.8800

1 2 1.0 3 1.0 4 1.0 5 1.0
2
3
4
5 6 1.0 9 1.0 10 1.0
6 7 1.5 8 1.5
7
8
9
10

HELIX 1 1

NonBon 3 1 0 0 0.0 0.0 0.5 0.0 0.0 -1.2

