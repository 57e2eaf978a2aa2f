// The worker of browsers.
import createCorvane from '../lib/corvane.mjs';
import type { Request } from './protocol.js';
import { serve } from './serve.js';

declare const self: { postMessage(value: unknown): void; onmessage: ((event: { data: Request }) => void) | null };
const take = serve(createCorvane, (answer) => self.postMessage(answer));
self.onmessage = (event) => void take(event.data);
