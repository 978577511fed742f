"""Makes the outputs that the fuzzer of outputs begins with: each kind of line that is read, in miniature, and the tests' own.

Usage: output_seeds.py    # from the top of the tree; writes fuzz/seeds/outputs
"""
import gzip
import lzma
import pathlib
import sys

sys.path.insert(0, "tests/cli")
import schemas_test  # noqa: E402

FOLDER = pathlib.Path("fuzz/seeds/outputs")
HEAD = schemas_test.HEAD
FORCES = schemas_test.FORCES
NORMAL = " Normal termination of Gaussian 16 at Thu Mar 14\n"
FAILED = " Error termination via Lnk1e in /g16/l{}.exe at\n"
MODES = (" Frequencies --   -20.0   10.0   30.0\n Red. masses --   1.0   1.0   1.0\n  Atom  AN      X      Y      Z        X      Y      Z        X      Y      Z\n"
         "     1   8     0.00   0.00   0.07     0.00   0.00   0.05     0.00   0.07   0.00\n")
PRECISE = (" Frequencies ---   -20.1234   10.1234\n Coord Atom Element:\n   1     1     8          0.00001   0.00002\n"
           "   2     1     8          0.00003   0.00004\n   3     1     8          0.00005   0.00006\n")
ENERGIES = (" SCF Done:  E(RHF) =  -75.5     A.U. after    8 cycles\n E2 =    -0.1D+00 EUMP2 =    -0.756D+02\n"
            " E2(B2PLYP) =    -0.2D+00 E(B2PLYP) =    -0.757D+02\n E3=       -0.1D-01        EUMP3=      -0.765D+02\n"
            " E4(SDQ)=  -0.1D-01        UMP4(SDQ)=  -0.7625D+02\n Wavefunction amplitudes converged. E(Corr)=     -76.75\n"
            " CCSD(T)= -0.7625D+02\n QCISD(T)= -0.7625D+02\n BD(T)= -0.7625D+02\n Total Energy, E(TD-HF/TD-DFT) =  -76.1\n"
            " ONIOM: extrapolated energy =    -401.25\n CBS-QB3 (0 K)=              -76.3375   CBS-QB3 Energy=           -76.3346\n"
            " Energy=    2.5E-03 NIter=   0.\n ... Do an extra-iteration for final printing\n ITN=  4 MaxIt= 64 E=    -77.9675 DE=-8.08D-06\n")
ORIENTATIONS = "".join(schemas_test.GEOMETRY.format(i).replace("Input", frame) for i, frame in enumerate(("Input", "Standard", "Z-Matrix"), 1))
CHECKPOINT = (schemas_test.CHECKPOINT.replace("FOpt", "Freq") + "Number of Normal Modes".ljust(43) + "I                1\n" +
              "Vib-E2".ljust(43) + "R   N=           1\n -5.00000000E+02\n" + "Vib-Modes".ljust(43) +
              "R   N=           3\n  1.00000000E-01  1.00000000-101  0.00000000E+00\n" + "Route".ljust(43) + "C   N=           1\n# freq hf/sto\n" +
              "Atom Labels".ljust(43) + "H   N=           1\nOxygen  \n" + "Total Energy".ljust(43) + "R     -7.500000000000000E+01\n" +
              "SCF Energy".ljust(43) + "R     -7.500000000000000E+01\n")


def outputs():
    yield "scan", schemas_test.STOPPED.encode()
    yield "checkpoint", CHECKPOINT.encode()
    yield "energies", (HEAD + ORIENTATIONS + ENERGIES + NORMAL).encode()
    yield "modes", (HEAD + ORIENTATIONS + PRECISE + MODES + FORCES + NORMAL).encode()
    yield "steps", (HEAD + NORMAL + " Link1:  Proceeding to internal job step number  2.\n -----\n #N Geom=AllCheck Freq\n -----\n"
                    " (Enter /g16/l101.exe)\n 5 alpha electrons        5 beta electrons\n").encode()
    yield "failed_scf", (HEAD + ORIENTATIONS + " >>>>>>>>>> Convergence criterion not met.\n SCF Done:  E(RHF) =  -75.5     A.U. after  129 cycles\n"
                         " Convergence failure -- run terminated.\n" + FAILED.format(502)).encode()
    yield "layers", (HEAD + " Charge =  0 Multiplicity = 1 for low   level calculation on real  system.\n"
                     " Charge = -1 Multiplicity = 2 for high  level calculation on model system.\n" + FAILED.format(101)).encode()
    yield "states", (HEAD + " S**2 before annihilation     0.7525,   after     0.7500\n The wavefunction has an internal instability.\n"
                     " Maximum number of steps reached.\n Point Number:  1     Path Number: 1\n Optimization completed.\n" + NORMAL).encode()
    yield "memory", (HEAD + " galloc:  could not allocate memory.\n").encode()
    yield "packed_gz", gzip.compress(HEAD.encode(), mtime=0)
    yield "packed_xz", lzma.compress(HEAD.encode())


def main():
    FOLDER.mkdir(parents=True, exist_ok=True)
    for name, content in outputs():
        (FOLDER / name).write_bytes(content)
    return 0


if __name__ == "__main__":
    sys.exit(main())
