// A thing that vtk.js draws with shaders of this page.

import vtkActor from '@kitware/vtk.js/Rendering/Core/Actor';
import vtkCellArray from '@kitware/vtk.js/Common/Core/CellArray';
import vtkDataArray from '@kitware/vtk.js/Common/Core/DataArray';
import vtkMapper from '@kitware/vtk.js/Rendering/Core/Mapper';
import vtkPolyData from '@kitware/vtk.js/Common/DataModel/PolyData';

// Cells of equal size in the layout of vtk.js: size, point, point, ...
function cells(indices, size) {
  const count = indices.length / size;
  const values = new Uint32Array(count * (size + 1));
  for (let cell = 0; cell < count; cell += 1) {
    values[cell * (size + 1)] = size;
    for (let k = 0; k < size; k += 1) {
      values[cell * (size + 1) + 1 + k] = indices[cell * size + k];
    }
  }
  return vtkCellArray.newInstance({ values });
}

// points: scene coordinates; triangles or segments: point numbers; attributes: { name: { values,
// components } }, which the vertex shader reads as nameMC.
export function polyData({ points, triangles, segments, attributes = {} }) {
  const data = vtkPolyData.newInstance();
  data.getPoints().setData(points, 3);
  if (triangles) data.setPolys(cells(triangles, 3));
  if (segments) data.setLines(cells(segments, 2));
  for (const [name, { values, components }] of Object.entries(attributes)) {
    data
      .getPointData()
      .addArray(vtkDataArray.newInstance({ name, values, numberOfComponents: components }));
  }
  return data;
}

// An actor whose uniforms come from the function `uniforms` at every drawing: numbers, or arrays of
// 2, 3, 4 or, for colour maps, 51 numbers.
export function drawable(data, shaders, uniforms) {
  const names = data
    .getPointData()
    .getArrays()
    .map((array) => array.getName());
  const mapper = vtkMapper.newInstance({
    scalarVisibility: false,
    customShaderAttributes: names,
  });
  mapper.setInputData(data);
  mapper.getViewSpecificProperties().OpenGL = {
    VertexShaderCode: shaders.vertex,
    FragmentShaderCode: shaders.fragment,
  };
  mapper.getViewSpecificProperties().ShadersCallbacks = [
    {
      userData: null,
      callback: (_, cellBuffer) => setAll(cellBuffer.getProgram(), uniforms()),
    },
  ];
  const actor = vtkActor.newInstance();
  actor.setMapper(mapper);
  return actor;
}

function setAll(program, values) {
  for (const [name, value] of Object.entries(values)) {
    if (!program.isUniformUsed(name)) continue;
    if (typeof value === 'number') program.setUniformf(name, value);
    else if (value.length === 2) program.setUniform2fv(name, value);
    else if (value.length === 4) program.setUniform4fv(name, value);
    else program.setUniform3fv(name, value);
  }
}
