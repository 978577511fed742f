// The worker's side in a thread of Node.js, which stands for a worker of a browser.
import { parentPort } from "node:worker_threads";
import { answerOn } from "../dist/index.js";

const port = { onmessage: null, postMessage: (message) => parentPort.postMessage(message) };
answerOn(port);
parentPort.on("message", (data) => port.onmessage({ data }));
