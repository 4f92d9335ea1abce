//VTK::System::Dec
// Edges of the part, a little in front of the skin they lie on.
attribute vec4 vertexMC;
uniform mat4 MCPCMatrix;
uniform vec4 cut;
varying float kept;

void main()
{
  kept = dot(cut, vertexMC);
  gl_Position = MCPCMatrix * vertexMC;
  gl_Position.z -= 0.0006;
}
