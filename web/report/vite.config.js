import { defineConfig } from 'vite';
import { viteSingleFile } from 'vite-plugin-singlefile';

// One file that asks nobody for anything: scripts and styles are written into the page.
export default defineConfig({
  base: './',
  plugins: [viteSingleFile({ removeViteModuleLoader: true }), namedReport()],
  build: {
    target: 'es2022',
    modulePreload: false,
    reportCompressedSize: false,
    chunkSizeWarningLimit: 4000,
  },
});

function namedReport() {
  return {
    name: 'named-report',
    enforce: 'post',
    generateBundle(_, bundle) {
      bundle['index.html'].fileName = 'report.html';
    },
  };
}
