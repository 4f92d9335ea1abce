import { readdirSync, readFileSync } from 'node:fs';
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

// Names the page, and adds the licences of the packages whose code went into it: whoever gets a
// report gets their code, too.
function namedReport() {
  const folders = new Set();
  return {
    name: 'named-report',
    enforce: 'post',
    moduleParsed({ id }) {
      const inside = id.match(/^([^\0]*\/node_modules\/(?:@[^/]+\/)?[^/]+)\//);
      if (inside) folders.add(inside[1]);
    },
    generateBundle(_, bundle) {
      const page = bundle['index.html'];
      const texts = [...folders].sort().map(licence);
      page.fileName = 'report.html';
      page.source = page.source.replace(
        '</body>',
        () => `<script type="text/plain" id="licences">\n${texts.join('\n')}</script>\n</body>`,
      );
    },
  };
}

function licence(folder) {
  const { name, version, license } = JSON.parse(readFileSync(`${folder}/package.json`, 'utf8'));
  const file = readdirSync(folder).find((entry) => /^licen[cs]e/i.test(entry));
  const text = file ? readFileSync(`${folder}/${file}`, 'utf8') : '';
  return `${name} ${version}, ${license}\n\n${text.replaceAll('<', '(').replaceAll('>', ')')}`;
}
