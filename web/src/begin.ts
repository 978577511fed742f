// What runs in a worker of a browser: quor-gjf/worker.
import { answerOn, type Port } from "./worker.js";

answerOn(globalThis as unknown as Port);
