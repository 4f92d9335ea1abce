//VTK::System::Dec
// Tubes of the lines: points of the line are moved outwards here, so that a tube is as thick on the
// screen at every zoom. Its depth is that of the line, lifted towards the eye over the skin it lies
// in, or pressed in front of everything.
attribute vec4 vertexMC;
attribute vec3 outwardMC;
attribute vec3 traceMC; // share of the angle, share of the fill time, length along the line
uniform mat4 MCPCMatrix;
uniform mat4 MCVCMatrix;
uniform vec4 cut;
uniform float radius;
uniform vec3 lift;
uniform vec2 depth; // factor and shift
varying vec3 outwardVC;
varying vec3 trace;
varying float kept;

void main()
{
  outwardVC = mat3(MCVCMatrix) * outwardMC;
  trace = traceMC;
  kept = dot(cut, vertexMC);
  gl_Position = MCPCMatrix * vec4(vertexMC.xyz + radius * outwardMC, 1.0);
  float lifted = (MCPCMatrix * vec4(vertexMC.xyz + lift, 1.0)).z;
  gl_Position.z = lifted * depth.x + depth.y;
}
