// `zentaro host` for Node: objects with get, put and call, and a printer with sell.
const { spawn } = require("node:child_process");
const readline = require("node:readline");

module.exports = function startHost() {
  const host = spawn("zentaro", ["host"], { stdio: ["pipe", "pipe", "inherit"] });
  const lines = readline.createInterface({ input: host.stdout })[Symbol.asyncIterator]();

  const request = async (method, params, progress) => {
    host.stdin.write(JSON.stringify({ jsonrpc: "2.0", id: 1, method, params }) + "\n");
    let answer;
    do {
      const { value, done } = await lines.next();
      if (done) throw new Error("zentaro host has ended");
      answer = JSON.parse(value);
      if (answer.method === "progress") progress(answer.params.text);
    } while (answer.method);
    if (answer.error) throw new Error(`${answer.error.code}: ${answer.error.message}`);
    return answer.result;
  };
  const wrapped = (value) => (value?.type === "object" ? object(value.object) : value?.type === "nothing" ? null : value);
  const object = (number) => ({
    get: async (name) => wrapped((await request("get", { object: number, name })).value),
    put: (name, value) => request("put", { object: number, name, value }),
    sell: (document, id, progress) => request("sale", { object: number, document, id, progress: true }, progress),
    call: async (name, ...args) => wrapped((await request("call", { object: number, name, args })).value),
  });
  return { create: async (name) => object((await request("create", { class: name })).object), end: () => host.stdin.end() };
};
