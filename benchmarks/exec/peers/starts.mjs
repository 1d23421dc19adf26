// Starts a program COUNT times, one after another, once for each line on standard input.

import { execFile } from "node:child_process";
import { createInterface } from "node:readline";

const [count, program, ...words] = process.argv.slice(2);

function start() {
  return new Promise((done) => { execFile(program, words, (error) => done(error ? 0 : 1)); });
}

for await (const request of createInterface({ input: process.stdin })) {
  let good = 0;
  for (let i = 0; i < Number(count); i += 1) good += await start();
  console.log(good);
}
