//VTK::System::Dec
// Tubes of the lines: points of the line are moved outwards here, so that a tube is as thick on the
// screen at every zoom. Its depth is that of the line, lifted towards the eye over the skin it lies
// in, or pressed in front of everything. Outwards is sideways as the eye sees it: were points moved
// along the line, the rim of a line that runs away from the eye would hide the line.
attribute vec4 vertexMC;
attribute vec3 outwardMC; // unit vector, longer for a dot
attribute vec3 alongMC;   // unit vector; 0 where the line is a dot
attribute vec3 traceMC;   // share of the angle, share of the fill time, length along the line
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
  vec3 sideways = cross(alongMC, normalize(lift));
  float turned = dot(sideways, sideways);
  // Seen from its end, a line is a disk.
  vec3 wide = turned > 0.001 ? sideways * dot(outwardMC, sideways) / turned : outwardMC;
  gl_Position = MCPCMatrix * vec4(vertexMC.xyz + radius * wide, 1.0);
  float lifted = (MCPCMatrix * vec4(vertexMC.xyz + lift, 1.0)).z;
  gl_Position.z = lifted * depth.x + depth.y;
}
