// Tests one after the other; the last line counts them.

const tests = [];

export function test(name, run) {
  tests.push({ name, run });
}

// Runs the tests whose names contain the pattern.
export async function runAll(pattern = '') {
  let failed = 0;
  const chosen = tests.filter(({ name }) => name.includes(pattern));
  for (const { name, run } of chosen) {
    try {
      await run();
      console.log(`ok      ${name}`);
    } catch (error) {
      failed += 1;
      console.log(`FAILED  ${name}\n${error.stack}`);
    }
  }
  console.log(`${chosen.length - failed} passed, ${failed} failed`);
  return failed === 0 && chosen.length > 0;
}
