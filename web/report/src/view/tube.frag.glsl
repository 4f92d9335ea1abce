//VTK::System::Dec
//VTK::Output::Dec
// Tubes of the lines: the colour of the meeting angle, or one colour for rims; nothing before the
// line has formed, and gaps in dashed ones.
varying vec3 outwardVC;
varying vec3 trace;
varying float kept;
uniform vec3 mapColours[17];
uniform float now;
uniform float dash;
uniform float plain;
uniform vec3 rim;

void main()
{
  if (kept < 0.0 || trace.y > now) discard;
  if (dash > 0.0 && mod(trace.z, dash) > 0.62 * dash) discard;
  float place = clamp(trace.x, 0.0, 1.0) * 16.0;
  int left = int(min(floor(place), 15.0));
  vec3 colour = mix(mapColours[left], mapColours[left + 1], place - float(left));
  float light = 0.72 + 0.28 * abs(normalize(outwardVC).z);
  gl_FragData[0] = vec4(plain > 0.0 ? rim : colour * light, 1.0);
}
