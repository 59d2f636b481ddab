// web/serve: shows build/web/ to this machine until Ctrl-C.
import { serve } from './server.mjs';

const [folder, port] = process.argv.slice(2);
try {
  const server = await serve(folder, Number(port));
  console.log(`The show is at http://localhost:${server.address().port}/ until you press Ctrl-C.`);
} catch (error) {
  console.error(`serve: port ${port} cannot be used (${error.code}); try another: web/serve PORT`);
  process.exit(1);
}
