"""The pieces in which commands go out."""


def test_the_pieces_of_the_sender_do_not_wait_for_acknowledgements(mailer, relay):
    """Which relays put off. Pieces that wait go out together."""
    assert mailer.send(gateway=relay.address).exit_code == 0
    session = relay.next_session()
    sender = next(i for i, command in enumerate(session.commands) if command.startswith(b"MAIL"))
    assert session.segments[sender] - session.segments[sender - 1] == 3
