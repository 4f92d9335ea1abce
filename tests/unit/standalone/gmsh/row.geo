// Row of four unit cubes along x. The files beside this one were written by gmsh 4.8.4: this mesh, and
// merged into it the field FillTime, 0.5, 1.5 and 2.25 on the first three cubes.
Point(1) = {0, 0, 0}; Point(2) = {4, 0, 0}; Point(3) = {4, 1, 0}; Point(4) = {0, 1, 0};
Line(1) = {1, 2}; Line(2) = {2, 3}; Line(3) = {3, 4}; Line(4) = {4, 1};
Curve Loop(1) = {1, 2, 3, 4}; Plane Surface(1) = {1};
Transfinite Curve {1, 3} = 5; Transfinite Curve {2, 4} = 2;
Transfinite Surface {1}; Recombine Surface {1};
out[] = Extrude {0, 0, 1} { Surface{1}; Layers{1}; Recombine; };
Physical Volume("part", 10) = {out[1]};
Physical Surface("gate", 7) = {out[5]};
Physical Surface("vent", 9) = {out[3]};
Physical Surface("side walls", 30) = {1, out[0], out[2], out[4]};
