// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/** example.js - the sheet of a first visit. */
export const example = `# A gusset plate: drag a corner in the picture
width = i2mm(4)
height = 60
A = [0,0]
B = [width,0]
C = [30,height]
M = (A+B)/2
dist(A,C)
P = ill(A,[110,60],B,C)
height/2+10*sin(9*x)
`;
