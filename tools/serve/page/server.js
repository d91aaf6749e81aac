// Asks the server. Its API is described in docs/serve.md.

async function reasonOf(response) {
  try {
    return (await response.json()).error;
  } catch {
    return `the server answered ${response.status}`;
  }
}

async function answerOf(response) {
  if (!response.ok) throw new Error(await reasonOf(response));
  return response.json();
}

export const addressOf = (path, parameters) => {
  const query = new URLSearchParams(parameters).toString();
  return query ? `${path}?${query}` : path;
};

export const ask = async (path, parameters = [], signal = undefined) =>
  answerOf(await fetch(addressOf(path, parameters), { signal }));

export const post = async (path, parameters, body = undefined) =>
  answerOf(await fetch(addressOf(path, parameters), { method: "POST", body }));

/** An image that is ready to be shown. The reason of a refusal is asked for only then. */
export async function loadPicture(parameters) {
  const address = addressOf("picture.png", parameters);
  const image = new Image();
  image.src = address;
  try {
    await image.decode();
  } catch {
    throw new Error(await reasonOf(await fetch(address)));
  }
  return image;
}
