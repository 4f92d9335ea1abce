//VTK::System::Dec
// Skin: passes on the place, its share of the fill time and whether the melt comes at all.
attribute vec4 vertexMC;
attribute vec2 fillMC; // share of the fill time; 1 reached, 0 never
uniform mat4 MCPCMatrix;
uniform mat4 MCVCMatrix;
uniform vec4 cut;
varying vec3 placeVC;
varying vec2 fill;
varying float kept;

void main()
{
  placeVC = (MCVCMatrix * vertexMC).xyz;
  fill = fillMC;
  kept = dot(cut, vertexMC);
  gl_Position = MCPCMatrix * vertexMC;
}
