// Cuts MEBIBYTES of text into lines with Node's own readline, once for each line on standard input.

import { createInterface } from "node:readline";
import { Readable } from "node:stream";

const line = Buffer.from("dnsmasq[53]: query[A] example.com from 127.0.0.1 and more words\n");
const chunkSize = 65536;
const size = Number(process.argv[2]) * 1024 * 1024;
const data = Buffer.alloc(Math.floor(size / line.length) * line.length, line);
const chunks = [];
for (let i = 0; i < data.length; i += chunkSize) chunks.push(data.subarray(i, i + chunkSize));

function cut() {
  return new Promise((done) => {
    let count = 0;
    const lines = createInterface({ input: Readable.from(chunks, { objectMode: false }), crlfDelay: Infinity });
    lines.on("line", () => { count += 1; });
    lines.on("close", () => done(count));
  });
}

for await (const request of createInterface({ input: process.stdin })) {
  console.log(await cut());
}
