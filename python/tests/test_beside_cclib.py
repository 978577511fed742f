"""What outputs hold, beside what cclib reads of them: charge, multiplicity, atoms, basis functions, energies, vibrations, last geometry.

Needs cclib, and QUOR_GJF_REAL_OUTPUTS, a folder of outputs compressed by gzip. Where cclib departs, it is on the list below.
"""
import gzip
import logging
import os
import pathlib

import numpy as np
import pytest

import quor_gjf as gjf

EV = 27.21138505
# cclib takes the count of Cartesian functions that is printed in frequencies, and the geometries of a trajectory from its own lines.
DEPARTS = {
    "nbasis": {"arc__Gaussian_neg_freq.out.gz"},
    "geometry": {"cclib__dvb_bomd.out.gz"},
}


def parsed(path, folder):
    cclib = pytest.importorskip("cclib")
    plain = folder / path.name[:-3]
    plain.write_bytes(gzip.decompress(path.read_bytes()))
    try:
        return cclib.io.ccread(str(plain), loglevel=logging.CRITICAL)
    except ValueError:  # a number that overflowed into stars
        return None


def same_shape(one, other):
    """Whether two geometries have the same distances: frames differ."""
    def distances(positions):
        return np.linalg.norm(positions[:, None] - positions[None, :], axis=-1)
    return one.shape == other.shape and np.abs(distances(one) - distances(other)).max() < 2e-5


def test_holds_what_cclib_reads(tmp_path):
    folder = os.environ.get("QUOR_GJF_REAL_OUTPUTS")
    if not folder:
        pytest.skip("QUOR_GJF_REAL_OUTPUTS names no folder of outputs")
    pytest.importorskip("cclib")
    compared = dict.fromkeys(("charge", "atoms", "nbasis", "energy", "frequencies", "geometry"), 0)
    wrong = []

    def compare(what, name, ours, theirs):
        if name not in DEPARTS.get(what, ()):
            compared[what] += 1
            if ours != theirs:
                wrong.append(f"{name}: {what} {ours} is {theirs} to cclib")

    for path in sorted(pathlib.Path(folder).glob("*.gz")):
        output = gjf.Output(path)
        if output.termination != "normal":
            continue
        theirs = parsed(path, tmp_path)
        ours = output.summary
        if theirs is None:
            continue
        compare("charge", path.name, (output.charge, output.multiplicity), (theirs.charge, theirs.mult))
        compare("atoms", path.name, ours["atoms"], int((theirs.atomnos > 0).sum()))
        if hasattr(theirs, "nbasis") and "nbasis" in ours:
            compare("nbasis", path.name, ours["nbasis"], theirs.nbasis)
        if hasattr(theirs, "scfenergies") and ours.get("energy", {}).get("kind") == "scf":
            compare("energy", path.name, True, abs(output.energy - theirs.scfenergies[-1] / EV) < 1e-5)
        if hasattr(theirs, "vibfreqs") and "frequencies" in ours:
            compare("frequencies", path.name, (ours["frequencies"]["count"], round(ours["frequencies"]["lowest"], 1)),
                    (len(theirs.vibfreqs), round(float(theirs.vibfreqs.min()), 1)))
        compare("geometry", path.name, True, same_shape(output.last.positions[output.last.numbers >= 0], theirs.atomcoords[-1]))
    assert not wrong, "\n".join(wrong)
    assert min(compared.values()) > 5, compared
