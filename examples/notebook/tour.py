# SPDX-FileCopyrightText: 2026 The mathexpr authors
# SPDX-License-Identifier: MIT

# tour.py [FOLDER] - three drawings as a notebook, which editors and Jupyter open cell by cell (# %%). Run as a script, it
# writes its pictures to FOLDER, by default docs/pictures/.

# %% [markdown]
# # Computed drawings
#
# The formulas are texts, as users of a CAD program type them; NumPy holds the numbers, and matplotlib draws.

# %%
import sys
from pathlib import Path

import mathexpr
import matplotlib
import numpy as np

matplotlib.use("svg")
matplotlib.rcParams.update({
    "svg.hashsalt": "mathexpr", "svg.fonttype": "none", "figure.constrained_layout.use": True, "axes.titlesize": 10,
    "axes.labelsize": 9, "xtick.labelsize": 8, "ytick.labelsize": 8, "axes.spines.top": False, "axes.spines.right": False,
})
import matplotlib.pyplot as plt

FOLDER = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parents[2] / "docs" / "pictures"


def keep(figure, name):
    """Writes a picture reproducibly."""
    figure.savefig(FOLDER / f"{name}.svg", metadata={"Date": None})
    plt.close(figure)


# %% [markdown]
# ## A bolt circle
#
# Holes on a circle of a given diameter. `i` is an array, so all holes are computed at once; angles are in degrees. (A variable whose name
# ends in `e` needs brackets before a plus, since `e+` is a power of ten: hence `hub` and not `centre`.)

# %%
hole = mathexpr.function(
    "hub+[d/2*cos(i*360/n),d/2*sin(i*360/n)]", "i", "d", "n", variables={"hub": mathexpr.Point(10, 5)}
)
holes = hole(np.arange(8), d=60, n=8)
spacing = mathexpr.function("dist(p,q)", "p", "q", points=["p", "q"])
gaps = spacing(holes, np.roll(holes, -1, axis=0))
assert np.allclose(gaps, 60 * np.sin(np.pi / 8))

figure, axes = plt.subplots(figsize=(4, 4))
axes.add_patch(plt.Circle((10, 5), 30, fill=False, linestyle="-.", linewidth=0.7))
axes.plot(*holes[:, :2].T, "o", markersize=13, markerfacecolor="white", markeredgewidth=1.5)
axes.plot(*holes[:, :2].T, "k+", markersize=18, markeredgewidth=0.5)
axes.plot(10, 5, "k+", markersize=14)
axes.annotate("hub", (10, 5), textcoords="offset points", xytext=(6, 6), fontsize=9)
axes.set(aspect="equal", xlabel="x, mm", ylabel="y, mm", title=f"8 holes, {gaps[0]:.2f} mm apart")
keep(figure, "bolt-circle")

# %% [markdown]
# ## A tolerance study
#
# Four parts in a housing: does the gap stay open? A hundred thousand assemblies are drawn at random.

# %%
generator = np.random.default_rng(2026)
count = 100_000
parts = {name: generator.normal(size, spread / 3, count) for name, size, spread in
         [("a", 12.0, 0.05), ("b", 8.5, 0.04), ("c", 20.0, 0.08), ("d", 5.25, 0.03), ("housing", 46.0, 0.10)]}
gap = mathexpr.evaluate_arrays("housing-(a+b+c+d)", parts, threads=2)
fits = mathexpr.evaluate_arrays("(gap>0.1)*(gap<0.4)", {"gap": gap}).mean()
assert abs(gap.mean() - 0.25) < 0.001 and 0.99 < fits < 1

figure, axes = plt.subplots(figsize=(5, 3))
axes.axvspan(0.1, 0.4, color="tab:green", alpha=0.15, linewidth=0)
axes.hist(gap, bins=80)
for limit in (0.1, 0.4):
    axes.axvline(limit, color="tab:green", linewidth=1)
axes.set(xlabel="gap, mm", ylabel="assemblies", title=f"{fits:.2%} of {count:,} gaps are from 0.1 to 0.4 mm")
keep(figure, "tolerance")

# %% [markdown]
# ## The offset of a polyline
#
# Each corner of the offset is where the offsets of its two sides meet: `nor` is the unit normal of a side, `ill` the
# intersection of two lines. The first and the last point have one side only.

# %%
line = np.array([[0, 0, 0], [40, 0, 0], [55, 20, 0], [30, 35, 0], [30, 60, 0], [0, 50, 0]], float)
corner = mathexpr.function(
    "ill(a+nor(a,b)*t,b+nor(a,b)*t,b+nor(b,c)*t,c+nor(b,c)*t)", "a", "b", "c", "t", points=["a", "b", "c"]
)
end = mathexpr.function("p+nor(a,b)*t", "p", "a", "b", "t", points=["p", "a", "b"])


def offset(points, t):
    """The polyline at a distance."""
    inner = corner(points[:-2], points[1:-1], points[2:], t)
    first, last = end(points[0], points[0], points[1], t), end(points[-1], points[-2], points[-1], t)
    return np.vstack([first, inner, last])


figure, axes = plt.subplots(figsize=(4, 4))
axes.plot(*line[:, :2].T, "k", linewidth=2, label="line")
for t in (2, 4, 6):
    moved = offset(line, t)
    sides, moved_sides = np.diff(line, axis=0), np.diff(moved, axis=0)
    assert np.allclose(np.cross(sides, moved_sides), 0)  # parallel, side by side
    axes.plot(*moved[:, :2].T, linewidth=1.2, label=f"t = {t}")
axes.set(aspect="equal", xlabel="x, mm", ylabel="y, mm", title="Offsets of a polyline")
axes.legend(loc="upper right", frameon=False, fontsize=9)
keep(figure, "offset")
