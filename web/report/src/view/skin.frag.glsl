//VTK::System::Dec
//VTK::Output::Dec
// Skin: the colour of the fill time up to now, grey where the melt has not come yet, stripes where
// it never comes. Lit from the eye, facet by facet.
varying vec3 placeVC;
varying vec2 fill;
varying float kept;
uniform vec3 mapColours[17];
uniform float now;
uniform float bands;
uniform float cutting;
uniform vec3 waiting;
uniform vec3 never;

vec3 colourAt(float share)
{
  float place = clamp(share, 0.0, 1.0) * 16.0;
  int left = int(min(floor(place), 15.0));
  return mix(mapColours[left], mapColours[left + 1], place - float(left));
}

void main()
{
  vec3 facet = normalize(cross(dFdx(placeVC), dFdy(placeVC)));
  if (kept < 0.0) discard;
  float share = fill.x;
  if (bands > 0.0) share = (min(floor(share * bands), bands - 1.0) + 0.5) / bands;
  vec3 colour = fill.x <= now ? colourAt(share) : waiting;
  if (fill.y < 0.999)
  {
    float stripe = mod(gl_FragCoord.x + gl_FragCoord.y, 12.0);
    colour = stripe < 6.0 ? never : mix(never, waiting, 0.85);
  }
  float light = 0.45 + 0.55 * abs(facet.z);
  if (cutting > 0.0 && !gl_FrontFacing) light *= 0.6;
  gl_FragData[0] = vec4(colour * light, 1.0);
}
