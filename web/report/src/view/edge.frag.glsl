//VTK::System::Dec
//VTK::Output::Dec
varying float kept;
uniform vec3 ink;

void main()
{
  if (kept < 0.0) discard;
  gl_FragData[0] = vec4(ink, 1.0);
}
