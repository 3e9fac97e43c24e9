// Sells through `zentaro serve`, and asks again under the same id until it is known what came of it.
//   ZENTARO_TOKEN=zt_... node sell.mjs http://127.0.0.1:8211 caja1 F-000123
const [service, printer, id] = process.argv.slice(2);

const sale = {
  document: "invoice",
  lines: [{ description: "Arepa", price: 10, quantity: 2, tax: 16 }],
  payments: [{ amount: 30 }],
};

async function sell(attempt) {
  for (;;) {
    const answer = await fetch(`${service}/v1/jobs/${id}?wait=20`, {
      method: "PUT",
      headers: { Authorization: `Bearer ${process.env.ZENTARO_TOKEN}`, "Content-Type": "application/json" },
      body: JSON.stringify({ printer, attempt, sale }),
    }).catch(() => null); // no answer: the same once more, nothing prints twice
    if (answer?.ok) {
      const job = await answer.json();
      if (job.state === "printed" || job.state === "not-printed") return job;
    } else if (answer && answer.status < 500 && answer.status !== 429) {
      throw new Error((await answer.json()).detail);
    }
    await new Promise((done) => { setTimeout(done, 1000); });
  }
}

const job = await sell(1);
console.log(job.state === "printed" ? `printed ${job.number}, total ${job.total}` : `not printed: ${job.cause}`);
